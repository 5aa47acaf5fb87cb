#pragma once

#include "suite/SuiteAbi.h"

#include <cstdint>

/// Tables of a suite library's functions, made from the list in the library's header. Product code calls the functions
/// under their own names, which delay_load/OrbStrataApi.h and its siblings define as references to the entries of the
/// table; loading the library (delay_load/DelayLoad.h) fills the table, a test may put functions of its own there.
///
/// A function whose library is not loaded does nothing: it returns false, 0 or null, an error number where its result
/// is one; a result parameter receives ORB_STRATA_INVALID_HANDLE, and a read of a number returns its default.
#define NL_SUITE_ENTRY(result, name, parameters) result(NL_SUITE_CALL* name) parameters;
#define NL_SUITE_NAME(result, name, parameters) [[maybe_unused]] static constexpr auto& name = NL_SUITE_TABLE.name;

/// The table of a library that is not loaded.
template <class Table>
Table UnloadedTable();

/// Puts a table back to what it was when this object was made. Tests use it around entries of their own.
template <class Table>
class SuiteTableGuard
{
public:
    explicit SuiteTableGuard(Table& table) : m_table(table), m_original(table) {}
    ~SuiteTableGuard() { m_table = m_original; }
    SuiteTableGuard(const SuiteTableGuard&) = delete;
    SuiteTableGuard& operator=(const SuiteTableGuard&) = delete;

    Table* operator->() { return &m_table; }

private:
    Table& m_table;
    const Table m_original;
};
