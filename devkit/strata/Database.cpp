#include "devkit/strata/Database.h"

#include "devkit/strata/RealPath.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <thread>
#include <utility>

namespace Strata
{

void Statement::Prepare()
{
    if (m_statement)
    {
        sqlite3_reset(m_statement.get());
        return;
    }
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v3(m_connection, m_sql.String(), -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    m_statement.reset(statement);
}

bool Statement::Step()
{
    const int result = m_statement ? sqlite3_step(m_statement.get()) : SQLITE_ERROR;
    m_failed = result != SQLITE_ROW && result != SQLITE_DONE;
    return result == SQLITE_ROW;
}

bool Statement::Run()
{
    Step();
    const bool done = !m_failed;
    Reset();
    return done;
}

void Statement::Reset()
{
    if (m_statement)
        sqlite3_reset(m_statement.get());
}

int64_t Statement::Integer(int column) const
{
    return sqlite3_column_int64(m_statement.get(), column);
}

std::string Statement::String(int column) const
{
    const void* text = sqlite3_column_text(m_statement.get(), column);
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(m_statement.get(), column));
    return text ? std::string(static_cast<const char*>(text), size) : std::string();
}

bool Statement::IsInteger(int column) const
{
    return sqlite3_column_type(m_statement.get(), column) == SQLITE_INTEGER;
}

bool Statement::IsString(int column) const
{
    return sqlite3_column_type(m_statement.get(), column) == SQLITE_TEXT;
}

bool Statement::IsNull(int column) const
{
    return sqlite3_column_type(m_statement.get(), column) == SQLITE_NULL;
}

void Statement::BindOne(int index, int64_t value)
{
    sqlite3_bind_int64(m_statement.get(), index, value);
}

void Statement::BindOne(int index, std::string_view value)
{
    sqlite3_bind_text64(m_statement.get(), index, value.data(), value.size(), SQLITE_STATIC, SQLITE_UTF8);
}

void Statement::BindOne(int index, std::nullptr_t)
{
    sqlite3_bind_null(m_statement.get(), index);
}

void Statement::Finalize::operator()(sqlite3_stmt* statement) const
{
    sqlite3_finalize(statement);
}

std::string Describe(const std::string& path, const std::string& what)
{
    return "The settings store \"" + path + "\" " + what + ".";
}

Database::Database(sqlite3* connection, std::string path) : m_connection(connection), m_path(std::move(path)) {}

void Database::Close::operator()(sqlite3* connection) const
{
    sqlite3_close_v2(connection);
}

std::unique_ptr<Database> Database::Open(const std::string& path, std::string& error)
{
    // Whoever uses the connection takes turns already, so SQLite need not lock.
    constexpr int kFlags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
    sqlite3* connection = nullptr;
    const bool opened = sqlite3_open_v2(RealPath(path).c_str(), &connection, kFlags, nullptr) == SQLITE_OK;
    std::unique_ptr<Database> database(new Database(connection, path));
    if (!opened)
    {
        error = database->Error();
        return nullptr;
    }
    sqlite3_busy_handler(connection, OnBusy, database.get());
    sqlite3_wal_hook(connection, OnCommit, database.get());
    // Someone who may only read can open the file only while its log is there.
    int persist = 1;
    sqlite3_file_control(connection, "main", SQLITE_FCNTL_PERSIST_WAL, &persist);
    // A store has tables only: what else a file may bring along does not run.
    for (const int feature :
         {SQLITE_DBCONFIG_TRUSTED_SCHEMA, SQLITE_DBCONFIG_ENABLE_VIEW, SQLITE_DBCONFIG_ENABLE_TRIGGER})
        sqlite3_db_config(connection, feature, 0, nullptr);
    database->KeepLogOnClose(true);
    return database;
}

int Database::OnBusy(void* self, int count)
{
    auto& database = *static_cast<Database*>(self);
    const auto now = Clock::now();
    if (count == 0)
        database.m_deadline = now < database.m_waitedInVain ? now : now + database.m_patience;
    if (now >= database.m_deadline)
    {
        database.m_waitedInVain = now + std::chrono::seconds(1);
        return 0;
    }
    // Short, for a turn among many writers that each take a fraction of it.
    std::this_thread::sleep_for(std::chrono::microseconds(count < 10 ? 50 : 500));
    return 1;
}

int Database::OnCommit(void* self, sqlite3* /*connection*/, const char* /*name*/, int pages)
{
    static_cast<Database*>(self)->m_logPages = pages;
    return SQLITE_OK;
}

void Database::BoundLog()
{
    constexpr int kLong = 1000;
    constexpr int kTooLong = 2 * kLong;
    if (m_logPages < kTooLong)
        m_restartAt = kTooLong;
    if (m_logPages < kLong)
        return;
    sqlite3_wal_checkpoint_v2(m_connection.get(), "main", SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
    if (m_logPages < m_restartAt)
        return;
    // Where others write all the time, there may never be a moment in which everything has been brought back and the
    // log can begin anew: now they have to wait, each time a moment, and the longer the log, the longer; but less than
    // any of them waits for its turn.
    constexpr int kLongestMs = 160;
    m_restartAt = m_logPages + kLong / 4;
    const std::chrono::milliseconds moment(std::min(40 * m_logPages / kTooLong, kLongestMs));
    const auto patience = std::exchange(m_patience, moment);
    const auto waitedInVain = std::exchange(m_waitedInVain, Clock::time_point());
    sqlite3_wal_checkpoint_v2(m_connection.get(), "main", SQLITE_CHECKPOINT_RESTART, nullptr, nullptr);
    m_patience = patience;
    m_waitedInVain = waitedInVain;
}

bool Database::HasMoved() const
{
    int moved = 0;
    sqlite3_file_control(m_connection.get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return moved != 0;
}

std::string Database::File() const
{
    return sqlite3_db_filename(m_connection.get(), "main");
}

bool Database::IsReadOnly() const
{
    return sqlite3_db_readonly(m_connection.get(), "main") != 0;
}

bool Database::BeginsAsDatabase()
{
    // Read with SQLite's own descriptor: closing another one would give up the process's locks on the file.
    static constexpr std::string_view kStart("SQLite format 3\0", 16);
    std::array<char, kStart.size()> start{};
    sqlite3_int64 size = 0;
    sqlite3_file* file = nullptr;
    sqlite3_file_control(m_connection.get(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
    if (!file || !file->pMethods || file->pMethods->xFileSize(file, &size) != SQLITE_OK)
        return false;
    return size == 0 || (file->pMethods->xRead(file, start.data(), static_cast<int>(start.size()), 0) == SQLITE_OK &&
                         std::string_view(start.data(), start.size()) == kStart);
}

bool Database::Execute(Sql sql)
{
    return sqlite3_exec(m_connection.get(), sql.String(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

int64_t Database::Number(Sql sql, int64_t otherwise)
{
    Statement statement = MakeStatement(sql);
    return statement.Bind().Step() ? statement.Integer(0) : otherwise;
}

void Database::KeepLogOnClose(bool keep)
{
    sqlite3_db_config(m_connection.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, keep ? 1 : 0, nullptr);
}

std::string Database::Error() const
{
    const auto reason = [this]() -> std::string {
        switch (sqlite3_errcode(m_connection.get()) & 0xFF)
        {
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
            return "is damaged or not a store";
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
        case SQLITE_PROTOCOL:
            return "is kept busy by another process";
        case SQLITE_READONLY:
        case SQLITE_PERM:
            return "may not be written";
        case SQLITE_CANTOPEN:
            return "cannot be opened or created";
        case SQLITE_FULL:
            return "cannot be written: the disk is full";
        case SQLITE_TOOBIG:
            return "does not take a value of this size";
        default:
            return "cannot be read or written";
        }
    };
    return Describe(m_path, reason() + " (" + sqlite3_errmsg(m_connection.get()) + ")");
}

bool Database::LastErrorWasBusy() const
{
    return (sqlite3_errcode(m_connection.get()) & 0xFF) == SQLITE_BUSY;
}

} // namespace Strata
