#include "devkit/strata/Session.h"

#include <utility>

namespace Strata
{

std::shared_ptr<Session> Session::Open(const std::string& file, WriteLog& writes, std::string& error)
{
    auto reader = StoreReader::Open(file, error);
    if (!reader)
        return nullptr;
    std::shared_ptr<Session> session(new Session(file, std::move(reader), writes));
    if (!session->m_reader->LastRevision(session->m_revision))
    {
        error = session->m_reader->Error();
        return nullptr;
    }
    if (writes.HasObserver())
        session->m_notifier.Start();
    return session;
}

Session::Session(std::string file, std::unique_ptr<StoreReader> reader, WriteLog& writes)
    : m_file(std::move(file)), m_stampPath(reader->StampPath()), m_writes(writes), m_reader(std::move(reader)),
      m_notifier(m_stampPath, [this] {
          std::unique_lock lock(m_mutex);
          RefreshIfStamped();
          lock.unlock();
          m_writes.Tell();
      })
{}

std::shared_ptr<Scope> Session::OpenScope(const std::string& sid)
{
    const std::lock_guard lock(m_mutex);
    if (auto scope = CachedScope(sid))
        return scope;
    if (!FollowMove())
        return nullptr;
    auto scope = std::make_shared<Scope>(Scope{sid, {}});
    const bool loaded = m_reader->Begin() && ReadChanges() && m_reader->Load(sid, scope->entries);
    if (loaded)
        m_scopes[sid] = scope;
    else
    {
        KeepError(m_reader->Error());
        scope.reset();
    }
    m_reader->End();
    return scope;
}

OrbStrataResult Session::Find(const Scope& scope, std::string_view key, std::optional<Entry>& entry)
{
    const std::lock_guard lock(m_mutex);
    if (const auto result = RefreshIfStamped(); result != kSuccess)
        return result;
    if (const auto at = scope.entries.find(key); at != scope.entries.end())
        entry = at->second;
    return kSuccess;
}

OrbStrataResult Session::List(const Scope& scope, std::string_view prefix, Entries& entries)
{
    const std::lock_guard lock(m_mutex);
    if (const auto result = RefreshIfStamped(); result != kSuccess)
        return result;
    for (auto at = scope.entries.lower_bound(prefix);
         at != scope.entries.end() && at->first.compare(0, prefix.size(), prefix) == 0; ++at)
        entries.emplace_hint(entries.end(), *at);
    return kSuccess;
}

OrbStrataResult Session::Subscribe(uintptr_t id, Subscription subscription)
{
    const std::lock_guard lock(m_mutex);
    if (const auto result = RefreshIfStamped(); result != kSuccess)
        return result;
    m_notifier.Add(id, std::move(subscription));
    return kSuccess;
}

bool Session::WaitForDelivery(std::chrono::steady_clock::time_point deadline)
{
    std::unique_lock lock(m_mutex);
    const bool refreshed = Refresh() == kSuccess;
    lock.unlock();
    m_writes.Tell();
    return refreshed && m_notifier.WaitUntilDelivered(deadline);
}

std::string Session::TakeError()
{
    const std::lock_guard lock(m_errorMutex);
    return std::exchange(m_error, {});
}

void Session::KeepError(std::string error)
{
    const std::lock_guard lock(m_errorMutex);
    m_error = std::move(error);
}

} // namespace Strata
