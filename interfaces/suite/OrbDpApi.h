#pragma once

/* Metrics (library nl_orb_datapipeline_api_32). Events are recorded for the component `code`; the result is 0 on
 * success, else an error number. Strings are copied. Any thread. */

#include "suite/SuiteAbi.h"

#define NL_ORB_DP_API_FUNCTIONS(F)                                                                                     \
    F(int32_t, OrbDpApi_MetricsRecordEvent, (int32_t code, const char* name))                                          \
    F(int32_t, OrbDpApi_MetricsRecordMajorEvent, (int32_t code, const char* name, const wchar_t* payload))

#if defined(NL_SUITE_PROTOTYPES)
NL_ORB_DP_API_FUNCTIONS(NL_SUITE_PROTOTYPE)
#endif
