#pragma once

#include "delay_load/ModuleHandler.h"
#include "delay_load/OrbStrataApi.h"

#include <map>
#include <string>

/// The suite's libraries, loaded once, with a store that keeps structured values in memory, as their texts. Everybody
/// may open and write it; of other values only the writing succeeds, and it tells of no change. One thread.
class MemoryStore
{
public:
    static MemoryStore& Get();
    MemoryStore(const MemoryStore&) = delete;
    MemoryStore& operator=(const MemoryStore&) = delete;

    OrbStrataHandle Handle() { return reinterpret_cast<OrbStrataHandle>(this); }

    void Clear();

    /// The text of a structured value, which need not be one; empty: there is no value.
    std::string& String(const std::wstring& key) { return m_texts[key]; }

    /// Whether every read of a structured value fails from now on.
    void FailReads(bool fail) { m_failReads = fail; }

private:
    MemoryStore();

    static OrbStrataHandle NL_SUITE_CALL Open(const wchar_t*, const wchar_t*, const wchar_t*, OrbStrataResult* result);
    static OrbStrataObject* NL_SUITE_CALL ReadObject(OrbStrataHandle, const wchar_t* key, OrbStrataResult* result);
    static OrbStrataResult NL_SUITE_CALL WriteObject(OrbStrataHandle, const wchar_t* key,
                                                     const OrbStrataObject* object);
    void ReplaceScalars();

    ModuleHandler m_modules;
    const bool m_loaded = m_modules.LoadDll();
    SuiteTableGuard<OrbStrataTable> m_table{g_orbStrata};
    std::map<std::wstring, std::string> m_texts;
    bool m_failReads = false;
};
