#pragma once

#include "devkit/strata/OrbStrataControl.h"

#include <gmock/gmock.h>

#include <QTemporaryDir>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

constexpr std::chrono::seconds kPatience{100};

/// An open handle that is closed at the end of its scope.
class Opened
{
public:
    enum class Kind
    {
        Normal,
        Elevated,
        Product
    };
    explicit Opened(Kind kind, const wchar_t* sid = L"S-1-5-18");
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;
    ~Opened() { Close(); }

    void Close();
    operator OrbStrataHandle() const { return m_handle; }
    OrbStrataResult Result() const { return m_result; }

private:
    OrbStrataResult m_result = 0;
    OrbStrataHandle m_handle = nullptr;
};

/// Keeps what subscriptions deliver, as "key type text", and "key type number" where a 32-bit number was watched.
/// Stands before the handle that it subscribes with, so as to outlive it: until that is closed something may still
/// come.
class Deliveries
{
public:
    OrbStrataSubscription Subscribe(OrbStrataHandle handle, const wchar_t* key, int32_t changeType);
    OrbStrataSubscription Watch(OrbStrataHandle handle, const wchar_t* prefix);
    /// What came, once everything committed so far has been delivered.
    std::vector<std::string> Take();
    /// Waits for at least so many, and returns all.
    std::vector<std::string> WaitFor(std::size_t count);
    /// Called for each delivery, on the store's thread.
    std::function<void()> onDelivery;

private:
    static void NL_SUITE_CALL OnChange(void* context, const wchar_t* key, int32_t changeType, const char* text);

    static void NL_SUITE_CALL OnWatched(void* context, int32_t changeType, const OrbStrataEntry* entry);

    std::mutex m_mutex;
    std::condition_variable m_arrived;
    std::vector<std::string> m_changes;
};

/// A store in an empty folder of its own. Fails if a test leaves a handle open.
class StoreFixture : public testing::Test
{
protected:
    StoreFixture();
    ~StoreFixture() override;

    std::string Path(const char* name) const { return m_folder.filePath(QString::fromUtf8(name)).toStdString(); }
    std::string StoreFile() const { return Path("data/store.db"); }

    static std::string LastError();
    static std::string String(OrbStrataHandle handle, const wchar_t* key, OrbStrataResult* result = nullptr);
    static OrbStrataResult SetObject(OrbStrataHandle handle, const wchar_t* key, const std::string& text);
    /// The stored entry as "type number text constraints"; empty if there is none.
    static std::string Stored(OrbStrataHandle handle, const wchar_t* key);

private:
    QTemporaryDir m_folder;
};
