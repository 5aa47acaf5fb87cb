#include "suite/SuiteAbi.h"

NL_SUITE_PROTOTYPE(int32_t, OrbDpApi_MetricsRecordEvent, (int32_t code, const char* name))

int32_t NL_SUITE_CALL OrbDpApi_MetricsRecordEvent(int32_t, const char*)
{
    return 0;
}
