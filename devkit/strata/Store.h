#pragma once

#include "devkit/faults/FaultInjector.h"
#include "devkit/strata/OrbStrataControl.h"
#include "devkit/strata/Session.h"
#include "devkit/strata/WriteLog.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Strata
{

/// Whose rights a handle has.
enum class Access
{
    Normal,   ///< writes below "windows.browsing_protection.internal." only
    Elevated, ///< writes every key that is not enforced
    Product   ///< writes every key; no fault applies
};

/// The one check of what names a scope: "S-1-" and numbers with dashes between them.
bool IsScope(std::string_view text);

/// The store as this process sees it: the handles, and what the development kit was told to do. The file is open, and
/// the notification thread runs, only while there is a handle. Thread-safe.
class Store
{
public:
    /// Made at its first use, destroyed by Shutdown.
    static Store& Instance();
    /// Destroys the store unless there are open handles.
    static void Shutdown();
    Store();

    /// `clientId` is told to who answers for elevation.
    OrbStrataHandle Open(const wchar_t* sid, Access access, const wchar_t* clientId, OrbStrataResult& result);
    void Close(OrbStrataHandle handle);
    uint32_t OpenHandles();

    /// Answers ORB_STRATA_NOT_FOUND where there is nothing under the key.
    OrbStrataResult Find(OrbStrataHandle handle, const wchar_t* key, Entry& entry);
    OrbStrataResult List(OrbStrataHandle handle, const wchar_t* prefix, Entries& entries);
    /// All edits or none. `written`, where given, receives the number of those that had something to do.
    OrbStrataResult Apply(OrbStrataHandle handle, const std::vector<Edit>& edits, uint32_t* written = nullptr);

    OrbStrataSubscription Subscribe(OrbStrataHandle handle, Interest interest, OrbStrataResult& result);
    void Unsubscribe(OrbStrataHandle handle, OrbStrataSubscription subscription);
    void HoldDelivery(bool on);
    bool WaitForDelivery(std::chrono::milliseconds timeout);

    /// Whether the handle has the product's rights; no fault applies to it.
    bool IsProduct(OrbStrataHandle handle);

    void SetFile(const char* path);
    void SetElevationHandler(OrbStrataElevationHandler handler, void* context);
    std::string LastError();

    SuiteFaults::FaultInjector faults;
    WriteLog writes;
    std::atomic<bool> acceptElevation = true;

private:
    struct Handle
    {
        Access access;
        std::shared_ptr<Session> session;
        std::shared_ptr<Scope> scope;
    };

    bool AcceptsElevation(const wchar_t* clientId);
    std::shared_ptr<const Handle> Lookup(OrbStrataHandle handle);
    std::shared_ptr<Session> OpenSession();
    /// Keeps the reason of a failure.
    OrbStrataResult Answer(Session& session, OrbStrataResult result);

    std::mutex m_mutex; // guards what follows
    std::string m_file;
    bool m_holdsDelivery = false;
    std::shared_ptr<Session> m_session;
    std::unordered_map<uintptr_t, std::shared_ptr<const Handle>> m_handles;
    std::string m_lastError;
    std::pair<OrbStrataElevationHandler, void*> m_elevationHandler;
};

} // namespace Strata
