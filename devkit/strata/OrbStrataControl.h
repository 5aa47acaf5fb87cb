#pragma once

/* What the development kit adds to the settings store: the product's own access, inspection, faults and the answers to
 * elevation prompts. Exported by the same library as the OrbStrata_* functions. Thread-safe, but for the functions that
 * set the process up (store file, observer), which come first. */

#include "devkit/faults/SuiteFault.h"
#include "suite/OrbStrata.h"

typedef enum OrbStrataType
{
    ORB_STRATA_TYPE_NONE = 0, /* constraints only, no value */
    ORB_STRATA_TYPE_BOOL = 1,
    ORB_STRATA_TYPE_INT32 = 2,
    ORB_STRATA_TYPE_INT64 = 3,
    ORB_STRATA_TYPE_STRING = 4, /* wide */
    ORB_STRATA_TYPE_UTF8 = 5,
    ORB_STRATA_TYPE_OBJECT = 6
} OrbStrataType;

/* One entry. `text` holds a string's UTF-8 text or an object's JSON text; `number` holds a boolean or an integer. */
typedef struct OrbStrataEntry
{
    const wchar_t* key;
    OrbStrataType type;
    int64_t number;
    const char* text;
    uint32_t constraints;
} OrbStrataEntry;

typedef void(NL_SUITE_CALL* OrbStrataEntryVisitor)(void* context, const OrbStrataEntry* entry);

/* A change and what the key held from then on: not what it may hold by now. Otherwise as OrbStrataCallback. Of texts
 * beyond 4096 bytes that were overwritten before anyone could look, the later one is told for the earlier. */
typedef void(NL_SUITE_CALL* OrbStrataWatcher)(void* context, int32_t changeType, const OrbStrataEntry* entry);

typedef enum OrbStrataWriter
{
    ORB_STRATA_BY_PLUGIN = 0,     /* on the thread that set the observer */
    ORB_STRATA_BY_BACKGROUND = 1, /* the plug-in too, on another thread */
    ORB_STRATA_BY_PRODUCT = 2,    /* a product handle of this process */
    ORB_STRATA_BY_OTHERS = 3      /* another process */
} OrbStrataWriter;

/* A write that reached the store: of a value (set or remove), which may have left it as it was, or of a constraint word
 * that changed. `entry` is what the key held from then on, as a watcher is told. */
typedef struct OrbStrataWrite
{
    const char* sid;
    const OrbStrataEntry* entry;
    bool ofValue;
    OrbStrataWriter by;
} OrbStrataWrite;

/* Told of writes in commit order, on a thread of the store's, or inside a call that writes or waits. */
typedef void(NL_SUITE_CALL* OrbStrataWriteObserver)(void* context, const OrbStrataWrite* write);

/* Whether the user agrees to an elevated handle. Called on the thread that opens the handle, which waits. */
typedef bool(NL_SUITE_CALL* OrbStrataElevationHandler)(void* context, const wchar_t* clientId);

#define NL_ORB_STRATA_CONTROL_FUNCTIONS(F)                                                                             \
    /* The database file (UTF-8 path), before the first handle. Default: the environment variable                      \
     * ORB_STRATA_STORE, else "Norlane/Strata/store.db" below Common AppData. */                                       \
    F(void, OrbStrataControl_SetStoreFile, (const char* path))                                                         \
    /* Why the store last failed to open, read or write, as a sentence; empty when it never did. Free the text. */     \
    F(char*, OrbStrataControl_LastError, (void))                                                                       \
    /* A handle with the product's own rights: writes every key, enforced ones too; no fault applies to it. */         \
    F(OrbStrataHandle, OrbStrataControl_OpenProductHandle, (const wchar_t* sid, OrbStrataResult* result))              \
    F(OrbStrataResult, OrbStrataControl_Remove, (OrbStrataHandle handle, const wchar_t* key))                          \
    F(OrbStrataResult, OrbStrataControl_Find,                                                                          \
      (OrbStrataHandle handle, const wchar_t* key, OrbStrataEntryVisitor visitor, void* context))                      \
    F(OrbStrataResult, OrbStrataControl_List,                                                                          \
      (OrbStrataHandle handle, const wchar_t* prefix, OrbStrataEntryVisitor visitor, void* context))                   \
    /* The one check of what names a scope: "S-1-" and numbers with dashes between them. */                            \
    F(bool, OrbStrataControl_IsScope, (const wchar_t* sid))                                                            \
    /* Writes an entry's value; the constraint word stays. Ill-formed text, a number that does not fit the type, no    \
     * value: ORB_STRATA_INVALID_ARGUMENT. */                                                                          \
    F(OrbStrataResult, OrbStrataControl_WriteValue, (OrbStrataHandle handle, const OrbStrataEntry* entry))             \
    /* Writes those entries of a list, in one transaction, under whose keys there is no value yet, whoever else writes \
     * meanwhile; a constraint word that is there stays. `written` (or null) receives their number. */                 \
    F(OrbStrataResult, OrbStrataControl_WriteIfAbsent,                                                                 \
      (OrbStrataHandle handle, const OrbStrataEntry* entries, uint32_t count, uint32_t* written))                      \
    /* Writes a whole entry, its constraint word too. */                                                               \
    F(OrbStrataResult, OrbStrataControl_Write, (OrbStrataHandle handle, const OrbStrataEntry* entry))                  \
    /* Writes a list of whole entries in one transaction, all or none. */                                              \
    F(OrbStrataResult, OrbStrataControl_WriteAll,                                                                      \
      (OrbStrataHandle handle, const OrbStrataEntry* entries, uint32_t count))                                         \
    /* Subscribes to every change of every key that begins with `prefix` (null: of every key). The handle's own writes \
     * are not told. Ended by OrbStrata_Unsubscribe. */                                                                \
    F(OrbStrataSubscription, OrbStrataControl_Watch,                                                                   \
      (OrbStrataHandle handle, const wchar_t* prefix, OrbStrataWatcher watcher, void* context,                         \
       OrbStrataResult* result))                                                                                       \
    F(void, OrbStrataControl_SetWriteObserver, (OrbStrataWriteObserver observer, void* context))                       \
    /* The answer to every elevation prompt of this process from now on; true at start. */                             \
    F(void, OrbStrataControl_SetElevationAnswer, (bool accept))                                                        \
    /* Who answers each prompt instead; null: the answer that was set. */                                              \
    F(void, OrbStrataControl_SetElevationHandler, (OrbStrataElevationHandler handler, void* context))                  \
    /* The next `count` calls (0 = every call) of `function` (C name) by handles other than the product's, with `key`  \
     * where it is not null, answer `code`; code 0 takes such a fault back. Several faults hold at once; the first set \
     * answers. For a function on fields, `key` is the field's name. Functions that answer nothing cannot fail. False: \
     * there is no such function. */                                                                                   \
    F(bool, OrbStrataControl_SetFault,                                                                                 \
      (const char* function, const wchar_t* key, OrbStrataResult code, uint32_t count))                                \
    /* The same with every way to fail. */                                                                             \
    F(bool, OrbStrataControl_AddFault, (const SuiteFault* fault))                                                      \
    /* Takes back every fault, and begins to count calls. */                                                           \
    F(void, OrbStrataControl_ClearFaults, (void))                                                                      \
    /* The faults that hold, in the order in which they were set. */                                                   \
    F(void, OrbStrataControl_Faults, (SuiteFaultVisitor visitor, void* context))                                       \
    /* How often a function was called since then by others than the product; `failed` receives how often it was made  \
     * to fail. */                                                                                                     \
    F(uint32_t, OrbStrataControl_CallsOf, (const char* function, uint32_t* failed))                                    \
    /* Waits until every change committed so far, by any process, has been noticed and its callbacks have returned.    \
     * False: time-out. */                                                                                             \
    F(bool, OrbStrataControl_WaitForDelivery, (uint32_t timeoutMs))                                                    \
    /* While it is on, subscribers of this process are told of nothing: what is committed waits. When it returns, no   \
     * callback runs; a callback must not call it. */                                                                  \
    F(void, OrbStrataControl_HoldDelivery, (bool on))                                                                  \
    /* Open handles of this process, product handles included. */                                                      \
    F(uint32_t, OrbStrataControl_OpenHandles, (void))                                                                  \
    /* Where no handle is open, makes the library as if it were freshly loaded: no thread, no file, no memory, nothing \
     * set up. While one is open, does nothing. */                                                                     \
    F(void, OrbStrataControl_Shutdown, (void))

#if defined(NL_SUITE_PROTOTYPES)
NL_ORB_STRATA_CONTROL_FUNCTIONS(NL_SUITE_PROTOTYPE)
#endif
