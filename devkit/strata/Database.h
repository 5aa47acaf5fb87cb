#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace Strata
{

/// The text of a statement. Made of literals only, so that no other text ever gets into one: values are bound.
class Sql
{
public:
    template <std::size_t Size>
    constexpr Sql(const char (&literal)[Size]) : m_text(literal)
    {}
    constexpr const char* String() const { return m_text; }

private:
    const char* m_text;
};

/// A statement, prepared when it is first bound. Strings are bound without a copy: they must live until the statement
/// has been reset. It must not outlive its connection.
class Statement
{
public:
    Statement(sqlite3* connection, Sql sql) : m_connection(connection), m_sql(sql) {}

    /// Binds the parameters from the first on and makes the statement ready to step.
    template <class... Values>
    Statement& Bind(const Values&... values)
    {
        Prepare();
        int index = 0;
        (BindOne(++index, values), ...);
        return *this;
    }

    /// Goes to the next row. False: there is none, or it failed; see Failed.
    bool Step();
    /// Runs a statement that gives no rows and has been bound, and resets it.
    bool Run();
    void Reset();
    bool Failed() const { return m_failed; }

    int64_t Integer(int column) const;
    std::string String(int column) const;
    bool IsInteger(int column) const;
    bool IsString(int column) const;
    bool IsNull(int column) const;

private:
    void Prepare();
    void BindOne(int index, int64_t value);
    void BindOne(int index, std::string_view value);
    void BindOne(int index, std::nullptr_t);

    struct Finalize
    {
        void operator()(sqlite3_stmt* statement) const;
    };
    sqlite3* m_connection;
    Sql m_sql;
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
    bool m_failed = false;
};

/// A sentence about a store: Describe("a.db", "is damaged") is: The settings store "a.db" is damaged.
std::string Describe(const std::string& path, const std::string& what);

/// One connection to a database file, for one thread at a time.
class Database
{
public:
    /// Opens the file, creating it where it is missing and may be written; a file that may not be written is opened for
    /// reading. Null: it could not be opened; `error` tells why.
    static std::unique_ptr<Database> Open(const std::string& path, std::string& error);

    /// Bounds each wait for another process from now on. Who has waited in vain does not wait again for a second, so
    /// that a list of calls is not delayed once for each.
    void SetPatience(std::chrono::milliseconds patience) { m_patience = patience; }

    bool IsReadOnly() const;
    /// Whether the file that is open is not the one at its path any more.
    bool HasMoved() const;
    /// The file's full path, without links; what belongs to the file stands beside it.
    std::string File() const;
    /// Whether the file begins as a database does, or is empty. SQLite does not look while a log says what is in the
    /// file, and would write the log over whatever is there.
    bool BeginsAsDatabase();
    bool Execute(Sql sql);
    /// The integer that `sql` gives in its first column and row; `otherwise` if it gives none or fails.
    int64_t Number(Sql sql, int64_t otherwise);
    Statement MakeStatement(Sql sql) { return Statement(m_connection.get(), sql); }

    /// Leaves the file as it is when the connection closes, instead of writing the log back into it; for a connection
    /// that only reads, or a file that turned out not to be ours.
    void KeepLogOnClose(bool keep);

    /// Brings the log back into the file once it is long, so that it stays within some megabytes. While one process
    /// keeps a read open, SQLite cannot begin the log anew, and it grows by what is written; a commit after that read
    /// has ended makes it short again.
    void BoundLog();

    /// What failed last, as a sentence.
    std::string Error() const;
    bool LastErrorWasBusy() const;
    const std::string& Path() const { return m_path; }

private:
    Database(sqlite3* connection, std::string path);
    static int OnBusy(void* self, int count);
    static int OnCommit(void* self, sqlite3* connection, const char* name, int pages);

    struct Close
    {
        void operator()(sqlite3* connection) const;
    };
    std::unique_ptr<sqlite3, Close> m_connection;
    std::string m_path;
    int m_logPages = 0;
    int m_restartAt = 0; // the length of the log at which others have to wait for it to begin anew

    using Clock = std::chrono::steady_clock;
    std::chrono::milliseconds m_patience{0};
    Clock::time_point m_deadline;
    Clock::time_point m_waitedInVain; // until when not to wait again
};

} // namespace Strata
