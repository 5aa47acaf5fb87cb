#include "handlers/BrowserExtensionsHandler.h"

#include "handlers/MainGuiHandler.h"
#include "handlers/Metrics.h"
#include "handlers/SharedVariables.h"
#include "logging/FunctionLog.h"

#include <limits>

using namespace SharedVariables;

namespace
{

const VariableIdentifier kReinstall("@BrowserExtensions\\Triggers:reinstall");
const VariableIdentifier kShowReinstallDialog("@BrowserExtensions\\Triggers:show_reinstall_dialog");

constexpr auto kProtection = &VdnSettings::browsingProtection;
constexpr auto kSkipActivation = &Settings::BrowsingProtection::skipActivateExtensions;

constexpr ShownVariable kExtensionOptions[] = {
    {"@BrowserExtensions\\Data:force_extensions", Value<kProtection, kSkipActivation>},
    {"@BrowserExtensions\\Data:force_extensions_readonly", ReadOnly<kProtection, kSkipActivation>},
};

/// The next value of a counter of which only the change matters; it starts anew where it cannot grow.
int Next(int counter)
{
    return counter == std::numeric_limits<int>::max() ? 0 : counter + 1;
}

} // namespace

const NotifyRule BrowserExtensionsHandler::kNotifyRules[] = {
    {kReinstall, &BrowserExtensionsHandler::ReinstallExtensions},
    {kLoadData, &BrowserExtensionsHandler::Load},
    NotifyRule(kSave),
};

BrowserExtensionsHandler::BrowserExtensionsHandler(const std::shared_ptr<UserSettings>& userSettings,
                                                   const std::shared_ptr<MainGuiHandler>& mainGui)
    : Handler(L"BrowserExtensionsHandler::OnNotify"), m_userSettings(userSettings), m_mainGui(mainGui)
{
    const EntryLog log(L"BrowserExtensionsHandler::BrowserExtensionsHandler");
}

BrowserExtensionsHandler::~BrowserExtensionsHandler()
{
    const EntryLog log(L"BrowserExtensionsHandler::~BrowserExtensionsHandler");
}

bool BrowserExtensionsHandler::Initialize(IPlugInManager* manager)
{
    const EntryLog log(L"BrowserExtensionsHandler::Initialize");
    if (!m_variables.Obtain(log, manager))
        return false;
    m_variables.Register(kExtensionOptions);
    Follow(kNotifyRules);
    return true;
}

void BrowserExtensionsHandler::Load()
{
    const EntryLog log(L"BrowserExtensionsHandler::Load");
    const auto user = m_userSettings.lock();
    if (!user)
    {
        LOG(log, 2, L"%s: UserSettingsController doesn't exist!");
        return;
    }
    m_variables.Show(kExtensionOptions, user->Settings());
}

void BrowserExtensionsHandler::ReinstallExtensions()
{
    const EntryLog log(L"BrowserExtensionsHandler::ReinstallExtensions");
    const auto mainGui = m_mainGui.lock();
    if (!mainGui)
    {
        LOG(log, 2, L"%s: MainGuiHandler doesn't exist!");
        return;
    }
    if (!mainGui->ShowUAC(true))
    {
        LOG(log, 4, L"%s: User declined UAC prompt");
        return;
    }
    const auto settings = mainGui->Elevated();
    if (!settings)
    {
        LOG(log, 2, L"%s: Unknown elevation error");
        return;
    }

    m_variables.Fire(kShowReinstallDialog);
    const auto counted = settings->WritableSettings().internal.reinstallExtensions.ChangeStored([](int& counter) {
        counter = Next(counter);
        return true;
    });
    const bool saved = counted != StrataSettings::SetResult::Unreadable && settings->Save();
    mainGui->ReleaseUnusedAdminHandle();
    if (!saved)
    {
        LOG(log, 2, L"%s: Couldn't save ReinstallBrowserExtensionsTrigger Strata setting");
        return;
    }
    RecordMetricsEvent(log, "browser_extensions_reinstall_triggered");
}
