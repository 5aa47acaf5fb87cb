#include "devkit/strata/Session.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace Strata
{

OrbStrataResult Session::RefreshIfStamped()
{
    int64_t announced = 0;
    if (!m_stamp.Read(announced))
        m_stamp = Stamp(m_stampPath, Stamp::Use::Reading); // made, or made anew: what it says counts from now on
    else if (announced == m_revision)
        return kSuccess;
    return Refresh();
}

OrbStrataResult Session::Refresh()
{
    if (!FollowMove())
        return ORB_STRATA_STORE_FAILED;
    OrbStrataResult result = kSuccess;
    if (!m_reader->Begin() || !ReadChanges())
    {
        result = m_reader->Failure();
        KeepError(m_reader->Error());
    }
    m_reader->End();
    return result;
}

/// Goes over to the file that stands in the place of the one that was open. Where there is none, what was read is kept:
/// only a write makes a new one.
bool Session::FollowMove()
{
    std::error_code unknown;
    if (!m_reader->HasMoved() || !std::filesystem::exists(std::filesystem::u8path(m_file), unknown))
        return true;
    std::string error;
    auto reader = StoreReader::Open(m_file, error);
    int64_t last = 0;
    if (!reader || !reader->LastRevision(last))
    {
        KeepError(reader ? reader->Error() : error);
        return false;
    }
    m_reader.swap(reader);
    if (ReadAnew(last))
        return true;
    KeepError(m_reader->Error());
    m_reader.swap(reader);
    return false;
}

bool Session::ReadChanges()
{
    int64_t last = 0;
    int64_t oldest = 0;
    if (!m_reader->LastRevision(last))
        return false;
    if (last == m_revision)
        return true;
    if (!m_reader->OldestChange(oldest))
        return false;
    if (last < m_revision || oldest > m_revision + 1)
        return ReadAnew(last);
    std::vector<Change> changes;
    if (!m_reader->ChangesAfter(m_revision, changes))
        return false;
    // Everything is read before anything is taken over, so that a failure leaves a state that was.
    std::map<std::pair<std::string, std::string>, std::optional<Entry>> entries;
    for (const Change& change : changes)
    {
        if (CachedScope(change.scope))
        {
            const auto [at, isNew] = entries.try_emplace({change.scope, change.key});
            if (isNew && !m_reader->Find(change.scope, change.key, at->second))
                return false;
        }
    }
    for (const auto& [place, entry] : entries)
    {
        const auto scope = CachedScope(place.first);
        if (entry)
            scope->entries.insert_or_assign(place.second, *entry);
        else
            scope->entries.erase(place.second);
    }
    m_revision = last;
    for (Change& change : changes)
    {
        const auto at = entries.find({change.scope, change.key});
        if (HasString(change.entry.type) && !change.entry.text && at != entries.end())
            change.entry = at->second.value_or(Entry());
        Announce(change);
    }
    ForgetOwnWrites();
    return true;
}

bool Session::ReadAnew(int64_t revision)
{
    std::vector<std::pair<std::shared_ptr<Scope>, Entries>> fresh;
    for (const auto& [sid, cached] : m_scopes)
    {
        if (const auto scope = cached.lock())
        {
            fresh.emplace_back(scope, Entries());
            if (!m_reader->Load(sid, fresh.back().second))
                return false;
        }
    }
    for (auto& [scope, entries] : fresh)
        Replace(*scope, std::move(entries));
    m_revision = revision;
    ForgetOwnWrites();
    return true;
}

void Session::Replace(Scope& scope, Entries entries)
{
    scope.entries.swap(entries);
    const Entries& before = entries;
    for (const auto& [key, entry] : before)
        if (scope.entries.find(key) == scope.entries.end())
            Announce({0, scope.sid, key, ORB_STRATA_REMOVED, true, {}});
    for (const auto& [key, entry] : scope.entries)
        if (const auto at = before.find(key); at == before.end() || at->second != entry)
            Announce({0, scope.sid, key, ORB_STRATA_CHANGED, true, entry});
}

void Session::Announce(const Change& change)
{
    const auto origin = std::find_if(m_ownWrites.begin(), m_ownWrites.end(), [&](const OwnWrites& own) {
        return own.first <= change.revision && change.revision <= own.last;
    });
    const bool own = origin != m_ownWrites.end();
    if (change.kind != 0)
        m_notifier.Announce(change, own ? origin->writer.handle : 0);
    m_writes.Add(change, !own                          ? ORB_STRATA_BY_OTHERS
                         : origin->writer.isProduct    ? ORB_STRATA_BY_PRODUCT
                         : origin->writer.inBackground ? ORB_STRATA_BY_BACKGROUND
                                                       : ORB_STRATA_BY_PLUGIN);
}

void Session::ForgetOwnWrites()
{
    const auto read = [this](const OwnWrites& own) { return own.last <= m_revision; };
    m_ownWrites.erase(std::remove_if(m_ownWrites.begin(), m_ownWrites.end(), read), m_ownWrites.end());
}

std::shared_ptr<Scope> Session::CachedScope(const std::string& sid)
{
    const auto at = m_scopes.find(sid);
    return at == m_scopes.end() ? nullptr : at->second.lock();
}

} // namespace Strata
