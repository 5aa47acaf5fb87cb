#pragma once

#include "settings/model/CommonStatistics.h"
#include "settings/model/Group.h"
#include "settings/model/Sites.h"
#include "settings/model/TimeLimitTrackingData.h"

namespace Settings
{

/// State that the feature keeps for itself; no options of the user's.
class Internal : public Group
{
public:
    explicit Internal(Model* parent) : Group(parent) {}

    Property<bool> mainGuiOpen{this, L"windows.browsing_protection.internal.main_gui_open", false};
    Property<bool> bankingSessionOpen{this, L"windows.browsing_protection.internal.banking_session_open", false};
    Property<Seconds> bankingCooldownPeriod{this, L"windows.browsing_protection.internal.banking_cooldown_period",
                                            Seconds(60)};
    Property<Seconds> bankingWindowLength{this, L"windows.browsing_protection.internal.banking_window_length",
                                          Seconds(600)};
    Property<bool> openBankingFlyerExpanded{this, L"windows.browsing_protection.internal.open_banking_flyer_expanded",
                                            true};
    Property<std::wstring> bankingCloseEvent{this, L"windows.browsing_protection.internal.banking_close_event",
                                             std::wstring()};
    Property<Minutes> timeLimitExtension{this, L"windows.browsing_protection.internal.time_limit_extension",
                                         Minutes(0)};
    Property<int> timeLimitTrigger{this, L"windows.browsing_protection.internal.time_limit_trigger", 0};
    Property<int> defaultBrowserType{this, L"windows.browsing_protection.internal.default_browser_type", 0};
    Property<bool> defaultBrowserExtensionDisabled{
        this, L"windows.browsing_protection.internal.default_browser_extension_disabled", false};
    Property<bool> parentalControlsConfigured{
        this, L"windows.browsing_protection.internal.parental_controls_configured", false};
    Property<int> reinstallExtensions{this, L"windows.browsing_protection.internal.reinstall_extensions", 0};
    TimeLimitTrackingData deviceMode{this, L"device_mode"};
    TimeLimitTrackingData browserMode{this, L"browser_mode"};
    CommonStatistics statistics{this};
    Sites sites{this, L"windows.browsing_protection.internal.sites"};
    Property<int> adapterMajorVersion{this,
                                      L"windows.browsing_protection.internal.statistics.vdn_adapter.version.major", 0};
    Property<bool> disableCategoryGrouping{this, L"windows.browsing_protection.internal.disable_category_grouping",
                                           false};
};

} // namespace Settings
