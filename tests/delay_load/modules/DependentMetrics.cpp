#define NL_SUITE_PROTOTYPES
#include "suite/OrbDpApi.h"

NL_SUITE_PROTOTYPE(int32_t, Helper_Answer, (void))

int32_t NL_SUITE_CALL OrbDpApi_MetricsRecordEvent(int32_t, const char*)
{
    return Helper_Answer();
}

int32_t NL_SUITE_CALL OrbDpApi_MetricsRecordMajorEvent(int32_t, const char*, const wchar_t*)
{
    return 0;
}
