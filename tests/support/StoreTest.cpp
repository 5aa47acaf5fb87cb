#include "tests/support/StoreTest.h"

#include <QCoreApplication>
#include <QLibrary>

#include <utility>

namespace
{

template <class Function>
void Resolve(QLibrary& library, Function*& function, const char* name)
{
    function = reinterpret_cast<Function*>(library.resolve(name));
    if (!function)
        ADD_FAILURE() << name << " is missing";
}

QString ModulePath(const char* name)
{
    return QCoreApplication::applicationDirPath() + QLatin1Char('/') + QLatin1String(name);
}

} // namespace

StoreTest::StoreTest()
{
    EXPECT_TRUE(m_modules.LoadDll());

    QLibrary strata(ModulePath("nl_orb_strata_32"));
    QLibrary metrics(ModulePath("nl_orb_datapipeline_api_32"));
    QLibrary flyers(ModulePath("nl_flyer_api_32"));
#define RESOLVE_STRATA(result, name, parameters) Resolve(strata, m_strata.name, #name);
    NL_ORB_STRATA_CONTROL_FUNCTIONS(RESOLVE_STRATA)
#undef RESOLVE_STRATA
#define RESOLVE_METRICS(result, name, parameters) Resolve(metrics, m_metrics.name, #name);
    NL_ORB_DP_CONTROL_FUNCTIONS(RESOLVE_METRICS)
#undef RESOLVE_METRICS
#define RESOLVE_FLYERS(result, name, parameters) Resolve(flyers, m_flyerControl.name, #name);
    NL_FLYER_CONTROL_FUNCTIONS(RESOLVE_FLYERS)
#undef RESOLVE_FLYERS

    m_strata.OrbStrataControl_SetStoreFile(m_folder.filePath(QStringLiteral("store.db")).toUtf8().constData());
    m_strata.OrbStrataControl_SetWriteObserver(OnWrite, this);
    m_metricEventsBefore = MetricEvents().size();
}

StoreTest::~StoreTest()
{
    ClearFaults();
    AnswerElevation(true);
    FailMetrics(0, 0);
    m_flyerControl.NlFlyerControl_ClearFaults();
    EXPECT_EQ(0u, OpenHandles());
    m_strata.OrbStrataControl_SetWriteObserver(nullptr, nullptr);
    m_strata.OrbStrataControl_Shutdown();
}

void StoreTest::WithProductHandle(const char* sid, const std::function<OrbStrataResult(OrbStrataHandle)>& use)
{
    OrbStrataResult result = ORB_STRATA_INVALID_HANDLE;
    const std::wstring wideSid(sid, sid + std::char_traits<char>::length(sid));
    const OrbStrataHandle handle = m_strata.OrbStrataControl_OpenProductHandle(wideSid.c_str(), &result);
    ASSERT_EQ(ORB_STRATA_SUCCESS, result);
    EXPECT_EQ(ORB_STRATA_SUCCESS, use(handle));
    OrbStrata_CloseHandle(handle);
}

StoreTest::Entries StoreTest::Contents(const char* sid)
{
    Entries entries;
    WithProductHandle(sid, [&](OrbStrataHandle handle) {
        const auto visit = [](void* context, const OrbStrataEntry* entry) {
            (*static_cast<Entries*>(context))[entry->key] = {entry->type, entry->number, entry->text ? entry->text : "",
                                                             entry->constraints};
        };
        return m_strata.OrbStrataControl_List(handle, L"", visit, &entries);
    });
    return entries;
}

void StoreTest::Put(const char* sid, const wchar_t* key, bool value)
{
    Put(sid, key, Stored{ORB_STRATA_TYPE_BOOL, value ? 1 : 0, {}, 0});
}

void StoreTest::Put(const char* sid, const wchar_t* key, int value)
{
    Put(sid, key, Stored{ORB_STRATA_TYPE_INT32, value, {}, 0});
}

void StoreTest::Put(const char* sid, const std::wstring& key, const Stored& value)
{
    WithProductHandle(
        sid,
        [&](OrbStrataHandle handle) {
            const OrbStrataEntry entry{key.c_str(), value.type, value.number, value.text.c_str(), value.constraints};
            return m_strata.OrbStrataControl_Write(handle, &entry);
        });
}

void StoreTest::PutAll(const char* sid, const Entries& values)
{
    std::vector<OrbStrataEntry> entries;
    for (const auto& [key, value] : values)
        entries.push_back({key.c_str(), value.type, value.number, value.text.c_str(), value.constraints});
    WithProductHandle(sid, [&](OrbStrataHandle handle) {
        return m_strata.OrbStrataControl_WriteAll(handle, entries.data(), static_cast<std::uint32_t>(entries.size()));
    });
}

void StoreTest::Constrain(const char* sid, const wchar_t* key, std::uint32_t constraints)
{
    WithProductHandle(
        sid, [&](OrbStrataHandle handle) { return OrbStrata_SetConstraints(handle, key, constraints); });
}

void StoreTest::Erase(const char* sid, const wchar_t* key)
{
    WithProductHandle(
        sid, [&](OrbStrataHandle handle) { return m_strata.OrbStrataControl_Remove(handle, key); });
}

void StoreTest::Fail(const char* function, const wchar_t* key, OrbStrataResult code, std::uint32_t count)
{
    EXPECT_TRUE(m_strata.OrbStrataControl_SetFault(function, key, code, count)) << function;
}

void StoreTest::FailFlyers(const char* function, std::int32_t code)
{
    EXPECT_TRUE(m_flyerControl.NlFlyerControl_SetFault(function, code, 0)) << function;
}

void StoreTest::Deliver()
{
    ASSERT_TRUE(m_strata.OrbStrataControl_WaitForDelivery(10'000));
}

void StoreTest::Settle()
{
    Deliver();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents();
}

std::vector<StoreTest::WrittenKey> StoreTest::TakeWrites()
{
    const std::lock_guard lock(m_writesMutex);
    return std::exchange(m_writes, {});
}

void StoreTest::OnWrite(void* context, const OrbStrataWrite* write)
{
    auto* test = static_cast<StoreTest*>(context);
    const std::lock_guard lock(test->m_writesMutex);
    if (write->ofValue && write->by <= ORB_STRATA_BY_BACKGROUND)
        test->m_writes.push_back({write->sid, write->entry->key});
}

std::vector<std::string> StoreTest::MetricEvents()
{
    std::vector<std::string> names;
    m_metrics.OrbDpControl_Events(
        [](void* context, const OrbDpEvent* event) {
            static_cast<std::vector<std::string>*>(context)->emplace_back(event->name);
        },
        &names);
    names.erase(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(m_metricEventsBefore));
    return names;
}
