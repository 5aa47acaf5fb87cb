#include "handlers/HandlerSupport.h"

#include "util/OrbDpApi.h"

#include <functional>

namespace
{
constexpr int kMetricsComponent = 600;
}

std::shared_ptr<IDataPeer> ObtainDataPeer(IPlugInManager* manager)
{
    return {manager->GetDataPeer(), std::bind(&IPlugInManager::ReleaseDataPeer, manager, std::placeholders::_1)};
}

void RecordMetricsEvent(const FunctionLog& log, const char* name)
{
    if (const int error = OrbDpApi_MetricsRecordEvent(kMetricsComponent, name); error != 0)
        LOG(log, 2, L"%s: OrbDpApi_MetricsRecordEvent failed with error: %d", error);
}
