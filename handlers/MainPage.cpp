#include "handlers/MainPage.h"

#include "handlers/MainGuiVariables.h"

using namespace MainGuiVariables;

namespace
{

QString OnOff(bool on)
{
    return on ? UiString("On") : UiString("Off");
}

} // namespace

void MainPage::ShowStatus(const VdnSettings& system, UserSettings* user)
{
    const bool isProtected = system.browsingProtection.enabled.Get();
    m_variables.Set(kStatusLevel, isProtected ? UiString("Ok") : UiString("Error"));
    m_variables.Set(kMainStatus, isProtected ? UiString("UsersProtected") : UiString("UsersNotProtected"));
    if (!isProtected)
        return m_variables.Set(kSubStatus, UiString("BpOff"));
    if (!user)
        return;
    const VdnSettings& settings = user->Settings();
    const bool isFiltered = settings.categories.enabled.Get() || settings.time.enabled.Get();
    m_variables.Set(kSubStatus, isFiltered ? UiString("WfOn") : UiString("WfOff"));
}

void MainPage::ShowSystemWideData(const VdnSettings& system)
{
    const auto show = [this](const StrataSettings::Property<bool>& feature, const VariableIdentifier& state,
                             const VariableIdentifier& readOnly, const VariableIdentifier& status) {
        const QString onOff = OnOff(feature.Get());
        m_variables.Set(state, onOff);
        m_variables.Set(readOnly, feature.IsEnforced());
        m_variables.Set(status, onOff);
    };
    show(system.browsingProtection.enabled, kBrowsingProtectionState, kBrowsingProtectionReadOnly,
         kBrowsingProtectionStatus);
    show(system.bankingProtection.enabled, kBankingProtectionState, kBankingProtectionReadOnly,
         kBankingProtectionStatus);
}

void MainPage::ShowUserData(const VdnSettings& system, const VdnSettings& user)
{
    ShowSwitch(kTimeLimitState, kTimeLimitStatus, user.time.enabled.Get());
    ShowSwitch(kWebFilterState, kWebFilterStatus, user.categories.enabled.Get());
    const auto& safeSearch =
        system.digiParenting.activated.Get() ? user.categories.safeSearchEnabled : user.searchResultFilter.enabled;
    ShowSwitch(kSafeSearchState, kSafeSearchStatus, safeSearch.Get());
    m_variables.Set(kBrowserExtensionDisabled, user.internal.defaultBrowserExtensionDisabled.Get());
    m_variables.Set(kDefaultBrowserType, user.internal.defaultBrowserType.Get());
}

void MainPage::ShowSwitch(const VariableIdentifier& state, const VariableIdentifier& status, bool on)
{
    const QString onOff = OnOff(on);
    m_variables.Set(state, onOff);
    m_variables.Set(status, onOff);
}
