#pragma once

/* What the development kit adds to the metrics library: reading what was recorded, and faults. Thread-safe. */

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
    /* The next `count` calls (0 = every call until cleared) answer `code`; code 0 clears. */                          \
    F(void, OrbDpControl_SetFault, (int32_t code, uint32_t count))

#if defined(NL_SUITE_PROTOTYPES)
NL_ORB_DP_CONTROL_FUNCTIONS(NL_SUITE_PROTOTYPE)
#endif
