#pragma once

#include "handlers/SharedVariables.h"

/// The UI variables of the main page and of the settings pages' life cycle.
namespace MainGuiVariables
{

using namespace SharedVariables;

inline const VariableIdentifier kBrowsingProtectionState("@BrowsingProtection\\Data:browsing_protection_state");
inline const VariableIdentifier
    kBrowsingProtectionReadOnly("@BrowsingProtection\\Data:browsing_protection_state_readonly");
inline const VariableIdentifier kBrowsingProtectionStatus("@BrowsingProtection\\Data:browsing_protection_status");
inline const VariableIdentifier kBankingProtectionState("@SafeBanking\\Data:banking_protection_state");
inline const VariableIdentifier kBankingProtectionReadOnly("@SafeBanking\\Data:banking_protection_state_readonly");
inline const VariableIdentifier kBankingProtectionStatus("@SafeBanking\\Data:banking_protection_status");
inline const VariableIdentifier kWebFilterState("@ContentControl\\Data:current_user_web_page_filter_switch_state");
inline const VariableIdentifier kWebFilterStatus("@ContentControl\\Status:current_user_web_page_filter_status");
inline const VariableIdentifier kTimeLimitState("@TimeLimit\\Data:time_limit_state");
inline const VariableIdentifier kTimeLimitStatus("@TimeLimit\\Data:time_limit_status");
inline const VariableIdentifier kSafeSearchState("@SafeSearch\\Data:safe_search_state");
inline const VariableIdentifier kSafeSearchStatus("@SafeSearch\\Data:safe_search_status");
inline const VariableIdentifier kStatusLevel("@ContentControl\\Status:status_level");
inline const VariableIdentifier kMainStatus("@ContentControl\\Status:main_status");
inline const VariableIdentifier kSubStatus("@ContentControl\\Status:sub_status");
inline const VariableIdentifier kBrowserExtensionDisabled("@ContentControl\\Status:browser_extension_disabled");
inline const VariableIdentifier kDefaultBrowserType("@ContentControl\\Status:default_browser_type");
inline const VariableIdentifier kMainGuiVisible("@Veridan\\MainGUI:visible");

inline const VariableIdentifier kShowAddWebsites("@ContentControl\\Triggers:show_add_websites_from_browser");
inline const VariableIdentifier kCloseAddWebsites("@ContentControl\\Triggers:close_add_websites_from_browser");
inline const VariableIdentifier kLaunchSupportTool("@ContentControl\\Triggers:launch_support_tool");
inline const VariableIdentifier kSaveAllowedUrl("@ContentControl\\Triggers:save_allowed_url");
inline const VariableIdentifier kSaveMyLinksUrl("@ContentControl\\Triggers:save_mylinks_url");
inline const VariableIdentifier kRequestShowWebsiteList("@ContentControl\\Triggers:request_show_website_list");
inline const VariableIdentifier kRequestShowAddWebsites("@ContentControl\\Triggers:request_show_add_websites_dialog");
inline const VariableIdentifier kRequestShowTimeLimitWizard("@ContentControl\\Triggers:request_show_tl_wizard");

inline const VariableIdentifier kRequestShowSettings("@Veridan\\Settings\\Triggers:request_show_settings_ui");
inline const VariableIdentifier kRequestShowWebFilter("@Veridan\\Settings\\Triggers:request_show_wf_page");
inline const VariableIdentifier kRequestShowTimeLimit("@Veridan\\Settings\\Triggers:request_show_tl_page");
inline const VariableIdentifier kRequestShowSafeSearch("@Veridan\\Settings\\Triggers:request_show_safesearch_page");
inline const VariableIdentifier kShowSettings("@Veridan\\Settings\\Triggers:show_settings_ui");
inline const VariableIdentifier kShowBrowsingProtection("@Veridan\\Settings\\Triggers:show_bp_page");
inline const VariableIdentifier kShowTimeLimit("@Veridan\\Settings\\Triggers:show_tl_page");
inline const VariableIdentifier kShowWebFilter("@Veridan\\Settings\\Triggers:show_wf_page");
inline const VariableIdentifier kShowBankingProtection("@Veridan\\Settings\\Triggers:show_bankingprotection_page");
inline const VariableIdentifier kShowSafeSearch("@Veridan\\Settings\\Triggers:show_safesearch_page");
inline const VariableIdentifier kShowBrowserExtensions("@Veridan\\Settings\\Triggers:show_browser_ext_page");
inline const VariableIdentifier kShowSecuritySettings("@Triggers\\Settings:security");
inline const VariableIdentifier kSettingsClosed("@Veridan\\Settings\\Triggers:settings_ui_closed");
inline const VariableIdentifier kSecuritySettingsClosed("@CompSec\\Settings\\Triggers:ui_closed");

inline const VariableIdentifier kSettingsSave("@VDNSettings:save");
inline const VariableIdentifier kSaveResult("@VDNSettings:saveResult");
inline const VariableIdentifier kSaveResultReceiver("@VDNSettings:saveResultReceiver");
inline const VariableIdentifier kSaveResultNotifier("@VDNSettings:saveResultNotifier");
inline const VariableIdentifier kShowMainWindow("@Triggers\\Windows:show_main_window");

} // namespace MainGuiVariables
