#include "devkit/strata/StoreFile.h"

#include "devkit/strata/Schema.h"
#include "devkit/strata/Utf8.h"

#include <limits>
#include <string_view>
#include <utility>

namespace Strata
{

namespace
{

// How far back a process can have fallen behind and still be told of every single write.
constexpr int64_t kKeptChanges = 8192;
// Forgetting is done in bulk, once in so many writes.
constexpr int64_t kForgetEvery = 1024;
// Longer texts are not kept twice: who needs one reads the entry.
constexpr std::size_t kLongestNotedString = 4096;

/// Runs a statement whose last three parameters are an entry's type, constraint word and value.
template <class... Values>
bool RunWith(Statement& statement, const Entry& entry, const Values&... values)
{
    const auto type = static_cast<int64_t>(entry.type);
    const auto constraints = static_cast<int64_t>(entry.constraints);
    if (entry.type == ORB_STRATA_TYPE_NONE || (HasString(entry.type) && !entry.text))
        return statement.Bind(values..., type, constraints, nullptr).Run();
    return HasString(entry.type) ? statement.Bind(values..., type, constraints, *entry.text).Run()
                                 : statement.Bind(values..., type, constraints, entry.number).Run();
}

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
        sound = ReadEntry(m_entry, 0, Strings::All, entry.emplace());
    sound = sound && !m_entry.Failed();
    m_entry.Reset();
    return sound;
}

std::string StoreConnection::Error() const
{
    return m_damaged ? Describe(m_database->Path(), "is damaged: it holds an entry of an unknown kind")
                     : m_database->Error();
}

bool StoreConnection::ReadEntry(const Statement& row, int column, Strings texts, Entry& entry)
{
    const int64_t type = row.Integer(column);
    const int64_t constraints = row.Integer(column + 1);
    bool sound = row.IsInteger(column) && row.IsInteger(column + 1) && type >= ORB_STRATA_TYPE_NONE &&
                 type <= ORB_STRATA_TYPE_OBJECT && constraints >= 0 &&
                 constraints <= std::numeric_limits<uint32_t>::max();
    entry.type = sound ? static_cast<OrbStrataType>(type) : ORB_STRATA_TYPE_NONE;
    entry.constraints = static_cast<uint32_t>(constraints);
    if (HasString(entry.type))
    {
        if (row.IsString(column + 2))
            entry.text = std::make_shared<const std::string>(row.String(column + 2));
        sound = sound && (entry.text || (texts == Strings::ShortOnes && row.IsNull(column + 2)));
    }
    else if (entry.type != ORB_STRATA_TYPE_NONE)
    {
        entry.number = row.Integer(column + 2);
        sound = sound && row.IsInteger(column + 2);
    }
    m_damaged = m_damaged || !sound;
    return sound;
}

bool StoreConnection::CheckKey(const std::string& key)
{
    const bool sound = IsUtf8(key);
    m_damaged = m_damaged || !sound;
    return sound;
}

OrbStrataResult StoreConnection::Failure() const
{
    return !m_damaged && m_database->LastErrorWasBusy() ? ORB_STRATA_BUSY : ORB_STRATA_STORE_FAILED;
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
      m_changes(Connection().MakeStatement("SELECT revision, scope, key, kind, valueWrite, type, constraints, value "
                                           "FROM changes WHERE revision > ?1 ORDER BY revision")),
      m_oldest(Connection().MakeStatement("SELECT min(revision) FROM changes"))
{}

bool StoreReader::Load(const std::string& scope, Entries& entries)
{
    bool sound = true;
    m_scope.Bind(scope);
    while (sound && m_scope.Step())
    {
        const std::string key = m_scope.String(0);
        sound = CheckKey(key) && ReadEntry(m_scope, 1, Strings::All, entries[key]);
    }
    sound = sound && !m_scope.Failed();
    m_scope.Reset();
    return sound;
}

bool StoreReader::ChangesAfter(int64_t revision, std::vector<Change>& changes)
{
    bool sound = true;
    m_changes.Bind(revision);
    while (sound && m_changes.Step())
    {
        Change& change = changes.emplace_back();
        change.revision = m_changes.Integer(0);
        change.scope = m_changes.String(1);
        change.key = m_changes.String(2);
        change.kind = static_cast<int32_t>(m_changes.Integer(3));
        change.valueWrite = m_changes.Integer(4) != 0;
        sound = CheckKey(change.key) && ReadEntry(m_changes, 5, Strings::ShortOnes, change.entry);
    }
    sound = sound && !m_changes.Failed();
    m_changes.Reset();
    return sound;
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
          "INSERT INTO entries (scope, key, revision, type, constraints, value) VALUES (?1, ?2, ?3, ?4, ?5, ?6) "
          "ON CONFLICT (scope, key) DO UPDATE SET revision = ?3, type = ?4, constraints = ?5, value = ?6")),
      m_erase(Connection().MakeStatement("DELETE FROM entries WHERE scope = ?1 AND key = ?2")),
      m_note(Connection().MakeStatement("INSERT INTO changes VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8)")),
      m_forget(Connection().MakeStatement("DELETE FROM changes WHERE revision <= ?1"))
{}

bool StoreWriter::Put(const std::string& scope, const std::string& key, const Entry& entry, int64_t revision)
{
    return RunWith(m_put, entry, scope, key, revision);
}

bool StoreWriter::Erase(const std::string& scope, const std::string& key)
{
    return m_erase.Bind(scope, key).Run();
}

bool StoreWriter::Note(const Change& change)
{
    Entry noted = change.entry;
    if (noted.text && noted.text->size() > kLongestNotedString)
        noted.text = nullptr;
    return RunWith(m_note, noted, change.revision, change.scope, change.key, int64_t{change.kind},
                   int64_t{change.valueWrite}) &&
           (change.revision % kForgetEvery != 0 || m_forget.Bind(change.revision - kKeptChanges).Run());
}

} // namespace Strata
