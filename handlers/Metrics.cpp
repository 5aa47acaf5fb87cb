#include "handlers/Metrics.h"

#include "delay_load/OrbDpApi.h"

namespace
{
constexpr int kComponent = 600;
}

void RecordMetricsEvent(const FunctionLog& log, const char* name)
{
    if (const int error = OrbDpApi_MetricsRecordEvent(kComponent, name); error != 0)
        LOG(log, 2, L"%s: OrbDpApi_MetricsRecordEvent failed with error: %d", error);
}
