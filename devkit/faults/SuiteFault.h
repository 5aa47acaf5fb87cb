#pragma once

/* How calls of a suite library's functions are made to fail, in the development kit. */

#include "suite/SuiteAbi.h"

typedef struct SuiteFault
{
    const char* function; /* C name; null: every function. Functions that answer nothing cannot fail */
    const wchar_t* key;   /* for calls with this key, or name of a field; null: for all */

    /* The result code. Where the function has one, a call that fails so answers a value beside it that nobody may use;
     * else, and with 0, null or false. */
    uint32_t code;

    uint32_t first;  /* the first matching call that fails, counted from 1 */
    uint32_t count;  /* how many in a row; 0: all from then on */
    bool carriedOut; /* the work is done, and only the answer says that it failed */
} SuiteFault;

/* A fault that still holds, with what is left of `first` and `count`. */
typedef void(NL_SUITE_CALL* SuiteFaultVisitor)(void* context, const SuiteFault* fault);
