#pragma once

#include "devkit/strata/Notifier.h"
#include "devkit/strata/Stamp.h"
#include "devkit/strata/StoreFile.h"
#include "devkit/strata/WriteLog.h"

#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Strata
{

/// A scope in memory, shared by the handles that are open on it.
struct Scope
{
    std::string sid;
    Entries entries;
};

/// Who writes.
struct Writer
{
    uintptr_t handle;
    bool isProduct;    ///< may write enforced keys
    bool inBackground; ///< not on the write observer's thread
};

/// This process's connection to the store's file: the scopes it has open, kept in memory and brought up to date
/// whenever the file's stamp shows that something was committed, and the thread that tells of changes. Reads never wait
/// for writes; writes of this process take turns. Thread-safe.
class Session
{
public:
    /// Null if the file cannot be opened; `error` tells why.
    static std::shared_ptr<Session> Open(const std::string& file, WriteLog& writes, std::string& error);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Null if the scope could not be read; see TakeError.
    std::shared_ptr<Scope> OpenScope(const std::string& sid);

    OrbStrataResult Find(const Scope& scope, std::string_view key, std::optional<Entry>& entry);
    OrbStrataResult List(const Scope& scope, std::string_view prefix, Entries& entries);

    /// All edits in one transaction, or none. When it returns, the change is in the file, every open scope of the
    /// process has it, and other processes have been told to look. `written`, where given, receives how many edits had
    /// something to do.
    OrbStrataResult Apply(const Scope& scope, const Writer& writer, const std::vector<Edit>& edits, uint32_t* written);

    /// The subscriber hears of changes committed after this call.
    OrbStrataResult Subscribe(uintptr_t id, Subscription subscription);
    bool Unsubscribe(uintptr_t handle, uintptr_t id) { return m_notifier.Remove(handle, id); }
    void UnsubscribeAll(uintptr_t handle) { m_notifier.RemoveAll(handle); }

    void HoldDelivery(bool on) { m_notifier.Hold(on); }
    bool WaitForDelivery(std::chrono::steady_clock::time_point deadline);
    bool OnNotificationThread() const { return m_notifier.OnThread(); }

    /// Why the last call that answered ORB_STRATA_STORE_FAILED or ORB_STRATA_BUSY did so, as a sentence; empty if none
    /// did since the last call.
    std::string TakeError();

private:
    /// Own writes that have not been read back yet, by their revisions.
    struct OwnWrites
    {
        int64_t first;
        int64_t last;
        Writer writer;
    };

    Session(std::string file, std::unique_ptr<StoreReader> reader, WriteLog& writes);

    // These are called with m_mutex held. False, or no success: the file could not be read, and nothing has changed.
    OrbStrataResult RefreshIfStamped();
    OrbStrataResult Refresh();
    bool FollowMove();
    bool ReadChanges();
    bool ReadAnew(int64_t revision);
    void Replace(Scope& scope, Entries entries);
    void Announce(const Change& change);
    void ForgetOwnWrites();
    std::shared_ptr<Scope> CachedScope(const std::string& sid);

    // These are called with m_writing held.
    bool OpenWriter();
    OrbStrataResult Commit(const OwnWrites& own);
    OrbStrataResult WriteOne(const Scope& scope, const Writer& writer, const Edit& edit, int64_t& revision);
    OrbStrataResult WriteFailed();

    void KeepError(std::string error);

    const std::string m_file;
    const std::string m_stampPath;
    WriteLog& m_writes;

    std::mutex m_writing; // taken before m_mutex
    std::unique_ptr<StoreWriter> m_writer;

    std::mutex m_mutex; // guards the reader and what it read
    std::unique_ptr<StoreReader> m_reader;
    Stamp m_stamp; // where the file cannot be had, every read looks into the store
    std::map<std::string, std::weak_ptr<Scope>> m_scopes;
    int64_t m_revision = 0; // up to which the scopes are
    std::vector<OwnWrites> m_ownWrites;

    std::mutex m_errorMutex; // taken last
    std::string m_error;

    Notifier m_notifier; // last: its thread ends before the rest goes
};

} // namespace Strata
