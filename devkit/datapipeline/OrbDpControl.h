#pragma once

/* What the development kit adds to the metrics library: reading what was recorded, and faults. Thread-safe. */

#include "devkit/faults/SuiteFault.h"
#include "suite/OrbDpApi.h"

typedef struct OrbDpEvent
{
    int32_t code;
    const char* name;
    const wchar_t* payload; /* null for a plain event */
    bool major;
} OrbDpEvent;

typedef void(NL_SUITE_CALL* OrbDpEventVisitor)(void* context, const OrbDpEvent* event);

#define NL_ORB_DP_CONTROL_FUNCTIONS(F)                                                                                 \
    /* Every event recorded since the library was loaded, in order. A call that was made to fail records nothing. */   \
    F(void, OrbDpControl_Events, (OrbDpEventVisitor visitor, void* context))                                           \
    /* The next `count` calls (0 = every call) of `function` (C name) answer `code`; code 0 takes such a fault back.   \
     * Null is every function, in place of all faults before. False: there is no such function. */                     \
    F(bool, OrbDpControl_SetFault, (const char* function, int32_t code, uint32_t count))                               \
    /* The faults that hold, in the order in which they were set. */                                                   \
    F(void, OrbDpControl_Faults, (SuiteFaultVisitor visitor, void* context))

#if defined(NL_SUITE_PROTOTYPES)
NL_ORB_DP_CONTROL_FUNCTIONS(NL_SUITE_PROTOTYPE)
#endif
