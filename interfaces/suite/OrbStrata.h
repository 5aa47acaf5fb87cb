#pragma once

/* The settings store (library nl_orb_strata_32).
 *
 * A store holds scopes, one for the machine ("S-1-5-18") and one for each user's SID; an empty SID is the calling user.
 * A scope maps keys (dotted lower-case names) to typed values and, beside each, a word of constraint bits.
 *
 * Every function may be called from any thread. Strings that a function returns belong to the caller, who hands them
 * back with OrbStrata_FreeString, also after a failure; null is accepted. No function blocks on a notification
 * callback. */

#include "suite/SuiteAbi.h"

typedef struct OrbStrataHandleTag* OrbStrataHandle;             /* an open scope; 0 = none */
typedef struct OrbStrataSubscriptionTag* OrbStrataSubscription; /* a registered callback; 0 = none */
typedef struct OrbStrataObjectTag OrbStrataObject;              /* a record of named fields, or an array of records */
typedef OrbStrataObject* const* OrbStrataIterator;              /* a position in an array; ++ goes to the next */

typedef uint32_t OrbStrataResult;
enum
{
    ORB_STRATA_SUCCESS = 0,
    ORB_STRATA_ACCESS_DENIED = 5,  /* this caller may not do this, or the key is enforced */
    ORB_STRATA_INVALID_HANDLE = 6, /* not an open handle, or no object */
    ORB_STRATA_NOT_FOUND = 10,     /* no value under this key, no such field */
    ORB_STRATA_INVALID_ARGUMENT = 87,
    ORB_STRATA_WRONG_TYPE = 110,   /* there is a value, of another type */
    ORB_STRATA_STORE_FAILED = 112, /* the store could not be read or written */
    ORB_STRATA_BUSY = 170          /* another process has kept the store for a quarter of a second: try again */
};

enum
{
    ORB_STRATA_CONSTRAINT_ENFORCED = 1 /* bit 0: the value is locked by policy */
};

enum
{
    ORB_STRATA_CHANGED = 1, /* the value or its constraint word changed */
    ORB_STRATA_REMOVED = 2  /* the key was removed */
};

/* Tells of a change that was not made through the subscribing handle. Called on a thread of the store's, never from
 * inside another store call, once for each change in the order of their commits. `objectString` is the text form of a
 * structured value (see OrbStrata_CreateObjectFromString), else null; texts are valid during the call only. */
typedef void(NL_SUITE_CALL* OrbStrataCallback)(void* context, const wchar_t* key, int32_t changeType,
                                               const char* objectString);

/* Handles. `store` is "safe"; `clientId` names the program for the store's diagnostics. A result other than 0 means no
 * handle. A normal handle may write only below "windows.browsing_protection.internal."; an elevated one, which the user
 * has to agree to, may write every key. Closing a handle ends its subscriptions.
 *
 * Reads take the value to return when the result is not 0; strings are copied. Writes return the result.
 *
 * Objects belong to the caller until OrbStrata_DeleteObject. OrbStrata_ArrayPushBack copies the element. The element
 * that an iterator gives belongs to its array. Field reads return the default when the result is not 0. The text form
 * of an object is JSON: an object of booleans, integers and strings, or an array of such objects; null for any other
 * text.
 *
 * OrbStrata_Unsubscribe returns when no callback of that registration runs or will run; it must not be called from
 * inside that callback. */
#define NL_ORB_STRATA_FUNCTIONS(F)                                                                                     \
    F(OrbStrataHandle, OrbStrata_OpenHandle,                                                                           \
      (const wchar_t* store, const wchar_t* sid, const wchar_t* clientId, OrbStrataResult* result))                    \
    F(OrbStrataHandle, OrbStrata_OpenElevatedHandle,                                                                   \
      (const wchar_t* store, const wchar_t* sid, const wchar_t* clientId, OrbStrataResult* result))                    \
    F(void, OrbStrata_CloseHandle, (OrbStrataHandle handle))                                                           \
    F(bool, OrbStrata_GetBool,                                                                                         \
      (OrbStrataHandle handle, const wchar_t* key, bool defaultValue, OrbStrataResult* result))                        \
    F(OrbStrataResult, OrbStrata_SetBool, (OrbStrataHandle handle, const wchar_t* key, bool value))                    \
    F(int32_t, OrbStrata_GetInt32,                                                                                     \
      (OrbStrataHandle handle, const wchar_t* key, int32_t defaultValue, OrbStrataResult* result))                     \
    F(OrbStrataResult, OrbStrata_SetInt32, (OrbStrataHandle handle, const wchar_t* key, int32_t value))                \
    F(int64_t, OrbStrata_GetInt64,                                                                                     \
      (OrbStrataHandle handle, const wchar_t* key, int64_t defaultValue, OrbStrataResult* result))                     \
    F(OrbStrataResult, OrbStrata_SetInt64, (OrbStrataHandle handle, const wchar_t* key, int64_t value))                \
    F(wchar_t*, OrbStrata_GetString,                                                                                   \
      (OrbStrataHandle handle, const wchar_t* key, const wchar_t* defaultValue, OrbStrataResult* result))              \
    F(OrbStrataResult, OrbStrata_SetString, (OrbStrataHandle handle, const wchar_t* key, const wchar_t* value))        \
    F(char*, OrbStrata_GetStringUtf8,                                                                                  \
      (OrbStrataHandle handle, const wchar_t* key, const char* defaultValue, OrbStrataResult* result))                 \
    F(OrbStrataResult, OrbStrata_SetStringUtf8, (OrbStrataHandle handle, const wchar_t* key, const char* value))       \
    F(void, OrbStrata_FreeString, (void* text))                                                                        \
    F(uint32_t, OrbStrata_GetConstraints, (OrbStrataHandle handle, const wchar_t* key, OrbStrataResult* result))       \
    F(OrbStrataResult, OrbStrata_SetConstraints, (OrbStrataHandle handle, const wchar_t* key, uint32_t constraints))   \
    F(OrbStrataObject*, OrbStrata_GetObject, (OrbStrataHandle handle, const wchar_t* key, OrbStrataResult* result))    \
    F(OrbStrataResult, OrbStrata_SetObject,                                                                            \
      (OrbStrataHandle handle, const wchar_t* key, const OrbStrataObject* object))                                     \
    F(OrbStrataObject*, OrbStrata_CreateObject, (void))                                                                \
    F(OrbStrataObject*, OrbStrata_CreateArray, (void))                                                                 \
    F(OrbStrataObject*, OrbStrata_CreateObjectFromString, (const char* text))                                          \
    F(void, OrbStrata_DeleteObject, (OrbStrataObject * object))                                                        \
    F(bool, OrbStrata_ObjectIsArray, (const OrbStrataObject* object))                                                  \
    F(OrbStrataIterator, OrbStrata_ArrayBegin, (const OrbStrataObject* array))                                         \
    F(OrbStrataIterator, OrbStrata_ArrayEnd, (const OrbStrataObject* array))                                           \
    F(const OrbStrataObject*, OrbStrata_IteratorGetAssociatedObject, (OrbStrataIterator iterator))                     \
    F(OrbStrataResult, OrbStrata_ArrayPushBack, (OrbStrataObject * array, const OrbStrataObject* element))             \
    F(bool, OrbStrata_ObjectGetBool,                                                                                   \
      (const OrbStrataObject* object, const wchar_t* field, bool defaultValue, OrbStrataResult* result))               \
    F(OrbStrataResult, OrbStrata_ObjectSetBool, (OrbStrataObject * object, const wchar_t* field, bool value))          \
    F(int64_t, OrbStrata_ObjectGetInt64,                                                                               \
      (const OrbStrataObject* object, const wchar_t* field, int64_t defaultValue, OrbStrataResult* result))            \
    F(OrbStrataResult, OrbStrata_ObjectSetInt64, (OrbStrataObject * object, const wchar_t* field, int64_t value))      \
    F(char*, OrbStrata_ObjectGetStringUtf8,                                                                            \
      (const OrbStrataObject* object, const wchar_t* field, const char* defaultValue, OrbStrataResult* result))        \
    F(OrbStrataResult, OrbStrata_ObjectSetStringUtf8,                                                                  \
      (OrbStrataObject * object, const wchar_t* field, const char* value))                                             \
    F(OrbStrataSubscription, OrbStrata_Subscribe,                                                                      \
      (OrbStrataHandle handle, const wchar_t* key, int32_t changeType, OrbStrataCallback callback, void* context,      \
       OrbStrataResult* result))                                                                                       \
    F(void, OrbStrata_Unsubscribe, (OrbStrataHandle handle, OrbStrataSubscription subscription))

#if defined(NL_SUITE_PROTOTYPES)
NL_ORB_STRATA_FUNCTIONS(NL_SUITE_PROTOTYPE)
#endif
