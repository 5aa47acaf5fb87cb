#include "fuzz/MemoryStore.h"

#include "devkit/strata/Object.h"
#include "fuzz/Target.h"

namespace
{

template <class Value>
Value NL_SUITE_CALL NotFound(OrbStrataHandle, const wchar_t*, Value otherwise, OrbStrataResult* result)
{
    *result = ORB_STRATA_NOT_FOUND;
    return otherwise;
}

template <class Char>
Char* NL_SUITE_CALL NoString(OrbStrataHandle, const wchar_t*, const Char*, OrbStrataResult* result)
{
    *result = ORB_STRATA_NOT_FOUND;
    return nullptr;
}

template <class Value>
OrbStrataResult NL_SUITE_CALL Accept(OrbStrataHandle, const wchar_t*, Value)
{
    return ORB_STRATA_SUCCESS;
}

std::uint32_t NL_SUITE_CALL NoConstraints(OrbStrataHandle, const wchar_t*, OrbStrataResult* result)
{
    *result = ORB_STRATA_SUCCESS;
    return 0;
}

OrbStrataSubscription NL_SUITE_CALL Subscribe(OrbStrataHandle, const wchar_t*, std::int32_t, OrbStrataCallback, void*,
                                              OrbStrataResult* result)
{
    *result = ORB_STRATA_SUCCESS;
    return nullptr;
}

} // namespace

MemoryStore& MemoryStore::Get()
{
    // Never destroyed: an unloaded library could not name what it keeps to a leak checker.
    static auto* const s_store = new MemoryStore;
    return *s_store;
}

MemoryStore::MemoryStore()
{
    Require(m_loaded, "the suite's libraries stand beside the program");
    m_table->OrbStrata_OpenHandle = &MemoryStore::Open;
    m_table->OrbStrata_OpenElevatedHandle = &MemoryStore::Open;
    m_table->OrbStrata_CloseHandle = [](OrbStrataHandle) {};
    m_table->OrbStrata_GetObject = &MemoryStore::ReadObject;
    m_table->OrbStrata_SetObject = &MemoryStore::WriteObject;
    m_table->OrbStrata_Subscribe = &Subscribe;
    m_table->OrbStrata_Unsubscribe = [](OrbStrataHandle, OrbStrataSubscription) {};
    ReplaceScalars();
}

void MemoryStore::ReplaceScalars()
{
    m_table->OrbStrata_GetBool = &NotFound<bool>;
    m_table->OrbStrata_GetInt32 = &NotFound<std::int32_t>;
    m_table->OrbStrata_GetInt64 = &NotFound<std::int64_t>;
    m_table->OrbStrata_GetString = &NoString<wchar_t>;
    m_table->OrbStrata_GetStringUtf8 = &NoString<char>;
    m_table->OrbStrata_GetConstraints = &NoConstraints;
    m_table->OrbStrata_SetBool = &Accept<bool>;
    m_table->OrbStrata_SetInt32 = &Accept<std::int32_t>;
    m_table->OrbStrata_SetInt64 = &Accept<std::int64_t>;
    m_table->OrbStrata_SetString = &Accept<const wchar_t*>;
    m_table->OrbStrata_SetStringUtf8 = &Accept<const char*>;
    m_table->OrbStrata_SetConstraints = &Accept<std::uint32_t>;
}

void MemoryStore::Clear()
{
    m_texts.clear();
    m_failReads = false;
}

OrbStrataHandle MemoryStore::Open(const wchar_t*, const wchar_t*, const wchar_t*, OrbStrataResult* result)
{
    *result = ORB_STRATA_SUCCESS;
    return Get().Handle();
}

OrbStrataObject* MemoryStore::ReadObject(OrbStrataHandle, const wchar_t* key, OrbStrataResult* result)
{
    OrbStrataObject* const object =
        Get().m_failReads ? nullptr : OrbStrata_CreateObjectFromString(Get().String(key).c_str());
    *result = Get().m_failReads ? ORB_STRATA_STORE_FAILED : object ? ORB_STRATA_SUCCESS : ORB_STRATA_NOT_FOUND;
    return object;
}

OrbStrataResult MemoryStore::WriteObject(OrbStrataHandle, const wchar_t* key, const OrbStrataObject* object)
{
    Get().String(key) = Strata::PrintObject(*object);
    return ORB_STRATA_SUCCESS;
}
