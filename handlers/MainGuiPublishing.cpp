#include "handlers/MainGuiHandler.h"

#include "handlers/MainGuiVariables.h"
#include "logging/FunctionLog.h"

using namespace MainGuiVariables;

namespace
{

QString OnOff(bool on)
{
    return on ? UiText("On") : UiText("Off");
}

} // namespace

void MainGuiHandler::LoadStatus()
{
    const EntryLog log(L"MainGuiHandler::LoadStatus");
    const auto system = m_systemSettings.lock();
    if (!system || !m_variables)
    {
        LOG(log, 1, L"%s: systemSettings=%d, m_dataPeer=%d", system ? 1 : 0, m_variables ? 1 : 0);
        return;
    }

    if (!system->Settings().browsingProtection.enabled.Get())
    {
        m_variables.Set(kStatusLevel, UiText("Error"));
        m_variables.Set(kMainStatus, UiText("UsersNotProtected"));
        m_variables.Set(kSubStatus, UiText("BpOff"));
        return;
    }
    m_variables.Set(kStatusLevel, UiText("Ok"));
    m_variables.Set(kMainStatus, UiText("UsersProtected"));
    if (const auto user = m_userSettings.lock())
    {
        const VdnSettings& settings = user->Settings();
        const bool filtered = settings.categories.enabled.Get() || settings.time.enabled.Get();
        m_variables.Set(kSubStatus, filtered ? UiText("WfOn") : UiText("WfOff"));
    }
}

void MainGuiHandler::LoadSystemWideData()
{
    const EntryLog log(L"MainGuiHandler::LoadSystemWideData");
    const auto system = m_systemSettings.lock();
    if (!system || !m_variables)
        return;

    const VdnSettings& settings = system->Settings();
    const auto publish = [this](const StrataSettings::Property<bool>& feature, const VariableIdentifier& state,
                                const VariableIdentifier& readOnly, const VariableIdentifier& status) {
        const QString onOff = OnOff(feature.Get());
        m_variables.Set(state, onOff);
        m_variables.Set(readOnly, feature.IsEnforced());
        m_variables.Set(status, onOff);
    };
    publish(settings.browsingProtection.enabled, kBrowsingProtectionState, kBrowsingProtectionReadOnly,
            kBrowsingProtectionStatus);
    publish(settings.bankingProtection.enabled, kBankingProtectionState, kBankingProtectionReadOnly,
            kBankingProtectionStatus);
}

void MainGuiHandler::LoadUserData()
{
    const EntryLog log(L"MainGuiHandler::LoadUserData");
    const auto user = m_userSettings.lock();
    const auto system = m_systemSettings.lock();
    if (!user || !system || !m_variables)
        return;

    const VdnSettings& settings = user->Settings();
    PublishSwitch(kTimeLimitState, kTimeLimitStatus, settings.time.enabled.Get());
    PublishSwitch(kWebFilterState, kWebFilterStatus, settings.categories.enabled.Get());
    const auto& safeSearch = system->Settings().digiParenting.activated.Get() ? settings.categories.safeSearchEnabled
                                                                              : settings.searchResultFilter.enabled;
    PublishSwitch(kSafeSearchState, kSafeSearchStatus, safeSearch.Get());
    m_variables.Set(kBrowserExtensionDisabled, settings.internal.defaultBrowserExtensionDisabled.Get());
    m_variables.Set(kDefaultBrowserType, settings.internal.defaultBrowserType.Get());
}

void MainGuiHandler::PublishSwitch(const VariableIdentifier& state, const VariableIdentifier& status, bool on)
{
    const QString onOff = OnOff(on);
    m_variables.Set(state, onOff);
    m_variables.Set(status, onOff);
}
