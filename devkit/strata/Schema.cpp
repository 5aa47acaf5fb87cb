#include "devkit/strata/Schema.h"

#include "devkit/strata/RealPath.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <system_error>
#include <thread>

namespace Strata::Schema
{

namespace
{

// To make a store takes longer than to write to it, and several processes may want to at once.
constexpr std::chrono::milliseconds kMakingPatience(5000);
// The thread of a user interface writes, too.
constexpr std::chrono::milliseconds kPatience(250);

// "Strt": tells the file from other databases.
constexpr int64_t kApplicationId = 0x53747274;
constexpr int64_t kVersion = 2;

// `entries` has rows and an index: in a table that is its own index (WITHOUT ROWID), looking for one key reads the
// values of others, and one list of 100,000 websites makes every write of the store a hundred times as dear. Stores
// that were made so are served by the same statements.
constexpr char kCreateEntries[] = R"(
CREATE TABLE entries (
    scope TEXT NOT NULL,
    key TEXT NOT NULL,
    type INTEGER NOT NULL,
    constraints INTEGER NOT NULL,
    revision INTEGER NOT NULL,
    value,
    PRIMARY KEY (scope, key)
);
PRAGMA application_id = 1400140404;
)";
static_assert(kApplicationId == 1400140404, "as in the statement");

// `changes` numbers the writes; its newest row is never deleted, so that no number is given twice. What a key held
// after the write is beside it.
constexpr char kCreateChanges[] = R"(
CREATE TABLE changes (
    revision INTEGER PRIMARY KEY,
    scope TEXT NOT NULL,
    key TEXT NOT NULL,
    kind INTEGER NOT NULL,
    valueWrite INTEGER NOT NULL,
    type INTEGER NOT NULL,
    constraints INTEGER NOT NULL,
    value
);
PRAGMA user_version = 2;
)";

// The first version noted objects only. Of its notes, the number goes on.
constexpr char kSetChangesAside[] = "ALTER TABLE changes RENAME TO former";
constexpr char kTakeNumberOver[] = R"(
INSERT INTO changes SELECT revision, scope, key, 0, 0, 0, 0, NULL FROM former ORDER BY revision DESC LIMIT 1;
DROP TABLE former;
)";

enum class State
{
    Store,
    Older,
    Empty,
    Foreign,
    Newer,
    Unreadable
};

/// To be asked inside a transaction: another process may be making the store.
State Inspect(Database& database)
{
    constexpr int64_t kFailed = -1;
    const int64_t application = database.Number("PRAGMA application_id", kFailed);
    const int64_t version = database.Number("PRAGMA user_version", kFailed);
    if (application == kFailed || version == kFailed)
        return State::Unreadable;
    if (application == kApplicationId)
        return version == kVersion ? State::Store : version < kVersion ? State::Older : State::Newer;
    const bool named = application != 0 || version != 0;
    return !named && database.Number("SELECT count(*) FROM sqlite_schema", kFailed) == 0 ? State::Empty
                                                                                         : State::Foreign;
}

/// Several processes may find the file empty at once: switching to the write-ahead log answers "busy" without waiting.
bool UseLog(Database& database)
{
    const auto deadline = std::chrono::steady_clock::now() + kMakingPatience;
    while (!database.Execute("PRAGMA journal_mode = WAL"))
    {
        if (!database.LastErrorWasBusy() || std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

/// Makes the tables unless another process has come first.
bool MakeTables(Database& database)
{
    if (!database.Execute("BEGIN IMMEDIATE"))
        return false;
    const State state = Inspect(database);
    const bool made = state == State::Empty ? database.Execute(kCreateEntries) && database.Execute(kCreateChanges)
                      : state == State::Older
                          ? database.Execute(kSetChangesAside) && database.Execute(kCreateChanges) &&
                                database.Execute(kTakeNumberOver)
                          : true;
    return made && database.Execute("COMMIT");
}

State Look(Database& database)
{
    const bool begun = database.Execute("BEGIN");
    const State state = begun ? Inspect(database) : State::Unreadable;
    return begun && database.Execute("COMMIT") ? state : State::Unreadable;
}

/// An empty file is one whose creation was interrupted, unless there is a log beside it: then its contents are gone,
/// and SQLite would throw the log away too.
bool LostItsContents(const std::filesystem::path& file)
{
    std::error_code failed;
    const auto size = std::filesystem::file_size(file, failed);
    if (failed || size != 0)
        return false;
    auto log = file;
    log += "-wal";
    const auto logSize = std::filesystem::file_size(log, failed);
    return !failed && logSize != 0;
}

} // namespace

std::unique_ptr<Database> Open(const std::string& path, std::string& error)
{
    const auto file = std::filesystem::u8path(path);
    std::error_code failed;
    if (file.has_parent_path())
        std::filesystem::create_directories(file.parent_path(), failed);
    if (failed)
    {
        error = Describe(path, "cannot be created: its folder cannot be made (" + failed.message() + ")");
        return nullptr;
    }
    if (LostItsContents(std::filesystem::u8path(RealPath(path))))
    {
        error = Describe(path, "is damaged: the file is empty, but its log is not");
        return nullptr;
    }
    auto database = Database::Open(path, error);
    if (!database)
        return nullptr;
    database->SetPatience(kMakingPatience);
    if (!database->BeginsAsDatabase())
    {
        error = Describe(path, "is damaged or not a store (it does not begin as one)");
        return nullptr;
    }
    State state = Look(*database);
    if (state == State::Older || (state == State::Empty && UseLog(*database)))
        state = MakeTables(*database) ? Look(*database) : State::Unreadable;
    switch (state)
    {
    case State::Store:
        // A commit then survives the end of the process at any moment, which is what is promised; a power failure may
        // take the last commits but leaves the file whole. A commit that waits for the disk takes twice as long.
        // A log that is kept is read whole by whoever opens the store first: the limit has the last writer empty it.
        if (database->Execute("PRAGMA synchronous = NORMAL; PRAGMA cell_size_check = ON;"
                              "PRAGMA journal_size_limit = 4194304"))
        {
            database->SetPatience(kPatience);
            return database;
        }
        error = database->Error();
        return nullptr;
    case State::Foreign:
        error = Describe(path, "is a database of another program");
        return nullptr;
    case State::Newer:
        error = Describe(path, "was made by a newer version");
        return nullptr;
    case State::Older:
    case State::Empty:
    case State::Unreadable:
        error = database->Error();
        return nullptr;
    }
    return nullptr;
}

} // namespace Strata::Schema
