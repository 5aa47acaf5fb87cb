#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <string>

/// The store's file as any other program may open it.
class RawStore
{
public:
    explicit RawStore(const std::string& file) { sqlite3_open(file.c_str(), &m_connection); }
    RawStore(const RawStore&) = delete;
    RawStore& operator=(const RawStore&) = delete;
    ~RawStore() { sqlite3_close(m_connection); }

    bool Run(const char* sql) { return sqlite3_exec(m_connection, sql, nullptr, nullptr, nullptr) == SQLITE_OK; }

    /// The integer that a query begins with; -1 if there is none.
    int64_t Number(const char* sql)
    {
        int64_t number = -1;
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(m_connection, sql, -1, &statement, nullptr);
        if (sqlite3_step(statement) == SQLITE_ROW)
            number = sqlite3_column_int64(statement, 0);
        sqlite3_finalize(statement);
        return number;
    }

private:
    sqlite3* m_connection = nullptr;
};
