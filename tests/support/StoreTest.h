#pragma once

#include "delay_load/ModuleHandler.h"
#include "delay_load/OrbStrataApi.h"
#include "delay_load/SuiteTable.h"
#include "devkit/datapipeline/OrbDpControl.h"
#include "devkit/flyer/NlFlyerControl.h"
#include "devkit/strata/OrbStrataControl.h"

#include <gmock/gmock.h>

#include <QTemporaryDir>

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

/// A test with the real settings store in an empty file of its own, and the suite's other libraries loaded.
class StoreTest : public testing::Test
{
public:
    static constexpr const char* kSystem = "S-1-5-18";
    static constexpr const char* kUser = "S-1-5-21-1-2-3-1001";

    struct Stored
    {
        OrbStrataType type = ORB_STRATA_TYPE_NONE;
        std::int64_t number = 0;
        std::string text;
        std::uint32_t constraints = 0;

        bool operator==(const Stored& other) const
        {
            return type == other.type && number == other.number && text == other.text &&
                   constraints == other.constraints;
        }
    };
    using Entries = std::map<std::wstring, Stored>;

    struct StrataControl
    {
        NL_ORB_STRATA_CONTROL_FUNCTIONS(NL_SUITE_ENTRY)
    };

    struct WrittenKey
    {
        std::string sid;
        std::wstring key;
    };

protected:
    StoreTest();
    ~StoreTest() override;

    /// What the store holds, read with the product's rights.
    Entries Contents(const char* sid);
    Stored Find(const char* sid, const wchar_t* key) { return Contents(sid)[key]; }

    /// The product's own writes.
    void Put(const char* sid, const wchar_t* key, bool value);
    void Put(const char* sid, const wchar_t* key, int value);
    void Put(const char* sid, const std::wstring& key, const Stored& value);
    void PutAll(const char* sid, const Entries& values);
    void Constrain(const char* sid, const wchar_t* key, std::uint32_t constraints);
    void Erase(const char* sid, const wchar_t* key);

    /// Makes calls of the plug-in fail: `count` times, or with 0 until the test ends.
    void Fail(const char* function, const wchar_t* key, OrbStrataResult code, std::uint32_t count);
    void ClearFaults() { m_strata.OrbStrataControl_ClearFaults(); }
    void AnswerElevation(bool accept) { m_strata.OrbStrataControl_SetElevationAnswer(accept); }
    void FailMetrics(std::int32_t code, std::uint32_t count) { m_metrics.OrbDpControl_SetFault(nullptr, code, count); }
    void FailFlyers(const char* function, std::int32_t code);

    /// Waits until the changes made so far have reached the plug-in on the store's thread; Settle(): on this one, too.
    void Deliver();
    void Settle();

    /// The plug-in's value writes since the test began or since the last call.
    std::vector<WrittenKey> TakeWrites();
    std::vector<std::string> MetricEvents();
    std::uint32_t OpenHandles() { return m_strata.OrbStrataControl_OpenHandles(); }

    StrataControl m_strata;

private:
    struct MetricsControl
    {
        NL_ORB_DP_CONTROL_FUNCTIONS(NL_SUITE_ENTRY)
    };
    struct FlyerControl
    {
        NL_FLYER_CONTROL_FUNCTIONS(NL_SUITE_ENTRY)
    };

    static void NL_SUITE_CALL OnWrite(void* context, const OrbStrataWrite* write);

    void WithProductHandle(const char* sid, const std::function<OrbStrataResult(OrbStrataHandle)>& use);

    QTemporaryDir m_folder;
    ModuleHandler m_modules;
    MetricsControl m_metrics;
    FlyerControl m_flyerControl;
    std::size_t m_metricEventsBefore = 0;
    std::mutex m_writesMutex;
    std::vector<WrittenKey> m_writes;
};
