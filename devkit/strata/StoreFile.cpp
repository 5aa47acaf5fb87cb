#include "devkit/strata/StoreFile.h"

#include "devkit/strata/Schema.h"

#include <limits>
#include <string_view>
#include <utility>

namespace Strata
{

namespace
{

// How far back a process can have fallen behind and still be told of every single write.
constexpr int64_t KeptChanges = 8192;
// Forgetting is done in bulk, once in so many writes.
constexpr int64_t ForgetEvery = 1024;
// Longer object texts are not kept twice: an empty text stands for them, and who needs one reads the entry.
constexpr std::size_t LongestNotedText = 4096;

} // namespace

StoreConnection::StoreConnection(std::unique_ptr<Database> database)
    : m_database(std::move(database)), m_last(m_database->MakeStatement("SELECT max(revision) FROM changes")),
      m_entry(m_database->MakeStatement("SELECT type, constraints, value FROM entries WHERE scope = ?1 AND key = ?2"))
{}

bool StoreConnection::LastRevision(int64_t& revision)
{
    const bool found = m_last.Bind().Step();
    revision = found ? m_last.Integer(0) : 0;
    m_last.Reset();
    return found;
}

bool StoreConnection::Find(const std::string& scope, const std::string& key, std::optional<Entry>& entry)
{
    entry.reset();
    bool sound = true;
    if (m_entry.Bind(scope, key).Step())
        sound = ReadEntry(m_entry, 0, entry.emplace());
    sound = sound && !m_entry.Failed();
    m_entry.Reset();
    return sound;
}

std::string StoreConnection::Error() const
{
    return m_damaged ? Describe(m_database->Path(), "is damaged: it holds an entry of an unknown kind")
                     : m_database->Error();
}

bool StoreConnection::ReadEntry(const Statement& row, int column, Entry& entry)
{
    const int64_t type = row.Integer(column);
    const int64_t constraints = row.Integer(column + 1);
    bool sound = type >= ORB_STRATA_TYPE_NONE && type <= ORB_STRATA_TYPE_OBJECT && constraints >= 0 &&
                 constraints <= std::numeric_limits<uint32_t>::max();
    entry.type = sound ? static_cast<OrbStrataType>(type) : ORB_STRATA_TYPE_NONE;
    entry.constraints = static_cast<uint32_t>(constraints);
    if (HasText(entry.type))
    {
        entry.text = std::make_shared<const std::string>(row.Text(column + 2));
        sound = sound && row.IsText(column + 2);
    }
    else if (entry.type != ORB_STRATA_TYPE_NONE)
    {
        entry.number = row.Integer(column + 2);
        sound = sound && row.IsInteger(column + 2);
    }
    m_damaged = m_damaged || !sound;
    return sound;
}

std::unique_ptr<StoreReader> StoreReader::Open(const std::string& path, std::string& error)
{
    auto database = Schema::Open(path, error);
    return database ? std::unique_ptr<StoreReader>(new StoreReader(std::move(database))) : nullptr;
}

StoreReader::StoreReader(std::unique_ptr<Database> database)
    : StoreConnection(std::move(database)), m_begin(Connection().MakeStatement("BEGIN")),
      m_end(Connection().MakeStatement("COMMIT")),
      m_scope(Connection().MakeStatement("SELECT key, type, constraints, value FROM entries WHERE scope = ?1")),
      m_changes(Connection().MakeStatement(
          "SELECT revision, scope, key, kind, valueWrite, text FROM changes WHERE revision > ?1 ORDER BY revision")),
      m_oldest(Connection().MakeStatement("SELECT min(revision) FROM changes"))
{}

bool StoreReader::Load(const std::string& scope, Entries& entries)
{
    bool sound = true;
    m_scope.Bind(scope);
    while (sound && m_scope.Step())
        sound = ReadEntry(m_scope, 1, entries[m_scope.Text(0)]);
    sound = sound && !m_scope.Failed();
    m_scope.Reset();
    return sound;
}

bool StoreReader::ChangesAfter(int64_t revision, std::vector<Change>& changes)
{
    m_changes.Bind(revision);
    while (m_changes.Step())
    {
        Change& change = changes.emplace_back();
        change.revision = m_changes.Integer(0);
        change.scope = m_changes.Text(1);
        change.key = m_changes.Text(2);
        change.kind = static_cast<int32_t>(m_changes.Integer(3));
        change.valueWrite = m_changes.Integer(4) != 0;
        if (m_changes.IsText(5))
            change.text = std::make_shared<const std::string>(m_changes.Text(5));
    }
    const bool whole = !m_changes.Failed();
    m_changes.Reset();
    return whole;
}

bool StoreReader::OldestChange(int64_t& revision)
{
    const bool found = m_oldest.Bind().Step();
    revision = found ? m_oldest.Integer(0) : 0;
    m_oldest.Reset();
    return found;
}

std::unique_ptr<StoreWriter> StoreWriter::Open(const std::string& path, std::string& error)
{
    auto database = Schema::Open(path, error);
    if (database && database->IsReadOnly())
    {
        error = Describe(path, "may not be written: the file or its folder is read-only");
        return nullptr;
    }
    if (!database)
        return nullptr;
    database->KeepLogOnClose(false);
    return std::unique_ptr<StoreWriter>(new StoreWriter(std::move(database)));
}

StoreWriter::StoreWriter(std::unique_ptr<Database> database)
    : StoreConnection(std::move(database)), m_begin(Connection().MakeStatement("BEGIN IMMEDIATE")),
      m_commit(Connection().MakeStatement("COMMIT")), m_rollback(Connection().MakeStatement("ROLLBACK")),
      m_put(Connection().MakeStatement(
          "INSERT INTO entries VALUES (?1, ?2, ?3, ?4, ?5, ?6) ON CONFLICT (scope, key) DO UPDATE "
          "SET type = ?3, constraints = ?4, revision = ?5, value = ?6")),
      m_erase(Connection().MakeStatement("DELETE FROM entries WHERE scope = ?1 AND key = ?2")),
      m_note(Connection().MakeStatement("INSERT INTO changes VALUES (?1, ?2, ?3, ?4, ?5, ?6)")),
      m_forget(Connection().MakeStatement("DELETE FROM changes WHERE revision <= ?1"))
{}

bool StoreWriter::Put(const std::string& scope, const std::string& key, const Entry& entry, int64_t revision)
{
    const auto type = static_cast<int64_t>(entry.type);
    const auto constraints = static_cast<int64_t>(entry.constraints);
    if (HasText(entry.type))
        return m_put.Bind(scope, key, type, constraints, revision, *entry.text).Run();
    if (entry.type == ORB_STRATA_TYPE_NONE)
        return m_put.Bind(scope, key, type, constraints, revision, nullptr).Run();
    return m_put.Bind(scope, key, type, constraints, revision, entry.number).Run();
}

bool StoreWriter::Erase(const std::string& scope, const std::string& key)
{
    return m_erase.Bind(scope, key).Run();
}

bool StoreWriter::Note(const Change& change)
{
    const auto kind = static_cast<int64_t>(change.kind);
    const auto valueWrite = static_cast<int64_t>(change.valueWrite);
    const bool isObject = change.text != nullptr;
    std::string_view text;
    if (isObject && change.text->size() <= LongestNotedText)
        text = *change.text;
    const bool noted = isObject
                           ? m_note.Bind(change.revision, change.scope, change.key, kind, valueWrite, text).Run()
                           : m_note.Bind(change.revision, change.scope, change.key, kind, valueWrite, nullptr).Run();
    return noted && (change.revision % ForgetEvery != 0 || m_forget.Bind(change.revision - KeptChanges).Run());
}

} // namespace Strata
