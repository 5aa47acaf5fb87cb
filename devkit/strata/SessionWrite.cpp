#include "devkit/strata/Session.h"

#include <utility>

namespace Strata
{

namespace
{

bool HasValue(const std::optional<Entry>& entry)
{
    return entry && entry->type != ORB_STRATA_TYPE_NONE;
}

/// What the key holds after the edit; nothing if nothing is left.
std::optional<Entry> Edited(const std::optional<Entry>& before, const Edit& edit)
{
    Entry after = edit.entry;
    switch (edit.kind)
    {
    case Edit::Kind::Value:
        after.constraints = before ? before->constraints : 0;
        return after;
    case Edit::Kind::IfAbsent:
        after.constraints = before ? before->constraints : after.constraints;
        return HasValue(before) ? before : after;
    case Edit::Kind::Constraints:
        after = before.value_or(Entry());
        after.constraints = edit.entry.constraints;
        return after;
    case Edit::Kind::Whole:
        return after;
    case Edit::Kind::Remove:
        return std::nullopt;
    }
    return before;
}

/// As in Change::kind. A key that holds nothing is like one that holds no value and no constraints.
int32_t KindOfChange(const std::optional<Entry>& before, const std::optional<Entry>& after)
{
    if ((HasValue(before) && !HasValue(after)) || (before && !after))
        return ORB_STRATA_REMOVED;
    return before.value_or(Entry()) != after.value_or(Entry()) ? ORB_STRATA_CHANGED : 0;
}

} // namespace

OrbStrataResult Session::Apply(const Scope& scope, const Writer& writer, const std::vector<Edit>& edits,
                               uint32_t* written)
{
    std::unique_lock writing(m_writing);
    int64_t revision = 0;
    if (!OpenWriter())
        return ORB_STRATA_STORE_FAILED;
    if (!m_writer->Begin())
        return WriteFailed();
    OrbStrataResult result = m_writer->LastRevision(revision) ? kSuccess : WriteFailed();
    const int64_t before = revision;
    for (auto edit = edits.begin(); edit != edits.end() && result == kSuccess; ++edit)
        result = WriteOne(scope, writer, *edit, revision);
    if (result == kSuccess)
        result = Commit({before + 1, revision, writer});
    if (result != kSuccess)
    {
        m_writer->Rollback();
        return result;
    }
    if (written)
        *written = static_cast<uint32_t>(revision - before);
    {
        const std::lock_guard lock(m_mutex);
        Refresh();
    }
    m_writer->BoundLog();
    writing.unlock();
    m_writes.Tell();
    return kSuccess;
}

OrbStrataResult Session::Commit(const OwnWrites& own)
{
    Stamp stamp;
    if (own.first <= own.last)
    {
        stamp = Stamp(m_stampPath, Stamp::Use::Writing);
        if (!stamp.Write(own.last))
        {
            // Nobody would notice the write.
            KeepError(Describe(m_file, "cannot be written: its stamp \"" + m_stampPath + "\" cannot"));
            return ORB_STRATA_STORE_FAILED;
        }
    }
    // Known before the commit is: whoever reads the change first must know whose it is.
    {
        const std::lock_guard lock(m_mutex);
        m_ownWrites.push_back(own);
    }
    if (m_writer->Commit())
        return kSuccess;
    const auto result = WriteFailed();
    const std::lock_guard lock(m_mutex);
    m_ownWrites.pop_back();
    return result;
}

OrbStrataResult Session::WriteOne(const Scope& scope, const Writer& writer, const Edit& edit, int64_t& revision)
{
    std::optional<Entry> before;
    if (!m_writer->Find(scope.sid, edit.key, before))
        return WriteFailed();
    if (before && (before->constraints & ORB_STRATA_CONSTRAINT_ENFORCED) != 0 && !writer.isProduct)
        return ORB_STRATA_ACCESS_DENIED;
    if (!before && edit.kind == Edit::Kind::Remove)
        return ORB_STRATA_NOT_FOUND;
    const auto after = Edited(before, edit);
    const int32_t kind = KindOfChange(before, after);
    const bool skipped = edit.kind == Edit::Kind::IfAbsent && HasValue(before);
    const bool valueWrite = !skipped && edit.kind != Edit::Kind::Constraints && (HasValue(before) || HasValue(after));
    if (kind != 0 || valueWrite)
    {
        if (!m_writer->Note({++revision, scope.sid, edit.key, kind, valueWrite, after.value_or(Entry())}))
            return WriteFailed();
    }
    if (kind == 0 && before.has_value() == after.has_value())
        return kSuccess;
    const bool written =
        after ? m_writer->Put(scope.sid, edit.key, *after, revision) : m_writer->Erase(scope.sid, edit.key);
    return written ? kSuccess : WriteFailed();
}

bool Session::OpenWriter()
{
    std::string error;
    if (m_writer && m_writer->HasMoved())
        m_writer.reset();
    if (!m_writer)
        m_writer = StoreWriter::Open(m_file, error);
    if (!m_writer)
        KeepError(std::move(error));
    return m_writer != nullptr;
}

OrbStrataResult Session::WriteFailed()
{
    KeepError(m_writer->Error());
    return m_writer->Failure();
}

} // namespace Strata
