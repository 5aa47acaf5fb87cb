#include "delay_load/ModuleHandler.h"

#include "delay_load/DelayLoad.h"
#include "logging/FunctionLog.h"

namespace
{

constexpr int kReserved = 100;

bool Load(bool& loaded, bool (*initialize)(int, DelayLoadError*))
{
    if (loaded)
        return true;
    DelayLoadError error;
    loaded = initialize(kReserved, &error);
    if (!loaded)
    {
        const FunctionLog log(L"ModuleHandler::LoadDll");
        LOG(log, 2, L"%s: Failed to load %hs. Error code: %d", error.fileName.c_str(), error.code);
        if (error.function)
            LOG(log, 3, L"%s: %hs has no function %hs", error.fileName.c_str(), error.function);
    }
    return loaded;
}

} // namespace

ModuleHandler::~ModuleHandler()
{
    if (m_flyerLoaded)
        NlFlyerApiDelayLoadUninitialize();
    if (m_metricsLoaded)
        OrbDpApi_DelayLoadUninitialize();
    if (m_strataLoaded)
        OrbStrata_DelayLoadUninitialize();
}

bool ModuleHandler::LoadDll()
{
    return Load(m_strataLoaded, OrbStrata_DelayLoadInitialize) && Load(m_metricsLoaded, OrbDpApi_DelayLoadInitialize) &&
           Load(m_flyerLoaded, NlFlyerApiDelayLoadInitialize);
}
