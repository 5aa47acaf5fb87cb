#include "handlers/ElevatedSettings.h"

#include "handlers/MainGuiHandler.h"

std::shared_ptr<ElevatedSettings>
FindElevatedSettings(const FunctionLog& log, const std::weak_ptr<MainGuiHandler>& mainGui, const wchar_t* initialized)
{
    const auto handler = mainGui.lock();
    if (!handler)
    {
        LOG(log, 1, L"%s: gui handler doesn't exist");
        return nullptr;
    }
    auto settings = handler->Elevated();
    if (!settings)
        LOG(log, 1, L"%s: saveController is not %ls", initialized);
    return settings;
}
