// The functions that the library exports.

#include "devkit/faults/Edge.h"
#include "devkit/strata/Api.h"
#include "devkit/strata/CInterface.h"

using namespace Strata;

namespace
{

struct Library : SuiteFaults::PlainLibrary
{
    using PlainLibrary::IsExempt;
    static SuiteFaults::FaultInjector& Faults() { return Store::Instance().faults; }

    static bool IsExempt(OrbStrataHandle handle) { return Store::Instance().IsProduct(handle); }

    static void MakeString(char*& text) { text = CopyString("not to be used"); }
    static void MakeString(wchar_t*& text) { text = CopyString(L"not to be used"); }
};

enum Number : std::size_t
{
    NL_ORB_STRATA_FUNCTIONS(SUITE_FAULT_NUMBER)
};

} // namespace

// NOLINTBEGIN(readability-identifier-naming)
#define ARGUMENTS_OrbStrata_OpenHandle (store, sid, clientId, result)
#define ARGUMENTS_OrbStrata_OpenElevatedHandle (store, sid, clientId, result)
#define ARGUMENTS_OrbStrata_CloseHandle (handle)
#define ARGUMENTS_OrbStrata_GetBool (handle, key, defaultValue, result)
#define ARGUMENTS_OrbStrata_SetBool (handle, key, value)
#define ARGUMENTS_OrbStrata_GetInt32 (handle, key, defaultValue, result)
#define ARGUMENTS_OrbStrata_SetInt32 (handle, key, value)
#define ARGUMENTS_OrbStrata_GetInt64 (handle, key, defaultValue, result)
#define ARGUMENTS_OrbStrata_SetInt64 (handle, key, value)
#define ARGUMENTS_OrbStrata_GetString (handle, key, defaultValue, result)
#define ARGUMENTS_OrbStrata_SetString (handle, key, value)
#define ARGUMENTS_OrbStrata_GetStringUtf8 (handle, key, defaultValue, result)
#define ARGUMENTS_OrbStrata_SetStringUtf8 (handle, key, value)
#define ARGUMENTS_OrbStrata_FreeString (text)
#define ARGUMENTS_OrbStrata_GetConstraints (handle, key, result)
#define ARGUMENTS_OrbStrata_SetConstraints (handle, key, constraints)
#define ARGUMENTS_OrbStrata_GetObject (handle, key, result)
#define ARGUMENTS_OrbStrata_SetObject (handle, key, object)
#define ARGUMENTS_OrbStrata_CreateObject ()
#define ARGUMENTS_OrbStrata_CreateArray ()
#define ARGUMENTS_OrbStrata_CreateObjectFromString (text)
#define ARGUMENTS_OrbStrata_DeleteObject (object)
#define ARGUMENTS_OrbStrata_ObjectIsArray (object)
#define ARGUMENTS_OrbStrata_ArrayBegin (array)
#define ARGUMENTS_OrbStrata_ArrayEnd (array)
#define ARGUMENTS_OrbStrata_IteratorGetAssociatedObject (iterator)
#define ARGUMENTS_OrbStrata_ArrayPushBack (array, element)
#define ARGUMENTS_OrbStrata_ObjectGetBool (object, field, defaultValue, result)
#define ARGUMENTS_OrbStrata_ObjectSetBool (object, field, value)
#define ARGUMENTS_OrbStrata_ObjectGetInt64 (object, field, defaultValue, result)
#define ARGUMENTS_OrbStrata_ObjectSetInt64 (object, field, value)
#define ARGUMENTS_OrbStrata_ObjectGetStringUtf8 (object, field, defaultValue, result)
#define ARGUMENTS_OrbStrata_ObjectSetStringUtf8 (object, field, value)
#define ARGUMENTS_OrbStrata_Subscribe (handle, key, changeType, callback, context, result)
#define ARGUMENTS_OrbStrata_Unsubscribe (handle, subscription)
// NOLINTEND(readability-identifier-naming)

NL_ORB_STRATA_FUNCTIONS(SUITE_FAULT_EXPORT)
