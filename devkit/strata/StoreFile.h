#pragma once

#include "devkit/strata/Database.h"
#include "devkit/strata/Entry.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Strata
{

using Entries = std::map<std::string, Entry, std::less<>>;

/// What reading and writing the store's file have in common. One thread at a time. Functions that answer bool answer
/// false when the file could not be read or written; Error then tells why, as a sentence.
class StoreConnection
{
public:
    /// The number of the last write; 0 before the first.
    bool LastRevision(int64_t& revision);
    /// Leaves `entry` empty where there is nothing under the key.
    bool Find(const std::string& scope, const std::string& key, std::optional<Entry>& entry);
    /// Whether the file that is open is not the one at its path any more.
    bool HasMoved() const { return m_database->HasMoved(); }
    /// The full path of the stamp that belongs to the file.
    std::string StampPath() const { return m_database->File() + "-stamp"; }
    std::string Error() const;
    /// What answers for a call that failed.
    OrbStrataResult Failure() const;

protected:
    explicit StoreConnection(std::unique_ptr<Database> database);
    Database& Connection() { return *m_database; }
    enum class Strings
    {
        All,
        ShortOnes ///< a long one may be missing
    };
    /// The entry in a row's columns type, constraints, value from `column` on; false for one that this store cannot
    /// have written.
    bool ReadEntry(const Statement& row, int column, Strings texts, Entry& entry);
    bool CheckKey(const std::string& key);

private:
    std::unique_ptr<Database> m_database; // before the statements, which must go first
    Statement m_last;
    Statement m_entry;
    bool m_damaged = false;
};

/// One reader, with a connection of its own, so that reading never waits for a write of this or another process.
class StoreReader : public StoreConnection
{
public:
    /// Opens the file, makes it a store if it is missing or empty, and looks whether it is one. Null: `error` tells
    /// why.
    static std::unique_ptr<StoreReader> Open(const std::string& path, std::string& error);

    /// All reads between Begin and End see one state.
    bool Begin() { return m_begin.Bind().Run(); }
    void End() { m_end.Bind().Run(); }

    bool Load(const std::string& scope, Entries& entries);
    /// The writes after `revision`, oldest first. The store forgets old ones: see OldestChange. Of a long text that was
    /// not noted, `entry` has the type but no text.
    bool ChangesAfter(int64_t revision, std::vector<Change>& changes);
    /// The number of the oldest write that the store still knows of; 0 for none.
    bool OldestChange(int64_t& revision);

private:
    explicit StoreReader(std::unique_ptr<Database> database);

    Statement m_begin;
    Statement m_end;
    Statement m_scope;
    Statement m_changes;
    Statement m_oldest;
};

/// One writer.
class StoreWriter : public StoreConnection
{
public:
    /// Null if the file cannot be written; `error` tells why.
    static std::unique_ptr<StoreWriter> Open(const std::string& path, std::string& error);

    /// Waits for other processes' writes, a bounded time. To be followed by Commit or Rollback.
    bool Begin() { return m_begin.Bind().Run(); }
    bool Commit() { return m_commit.Bind().Run(); }
    void BoundLog() { Connection().BoundLog(); }
    void Rollback() { m_rollback.Bind().Run(); }

    bool Put(const std::string& scope, const std::string& key, const Entry& entry, int64_t revision);
    bool Erase(const std::string& scope, const std::string& key);
    /// Notes a write for everyone who follows the store.
    bool Note(const Change& change);

private:
    explicit StoreWriter(std::unique_ptr<Database> database);

    Statement m_begin;
    Statement m_commit;
    Statement m_rollback;
    Statement m_put;
    Statement m_erase;
    Statement m_note;
    Statement m_forget;
};

} // namespace Strata
