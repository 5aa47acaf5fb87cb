#pragma once

#include "tarn/VariableIdentifier.h"

/// The UI variables of the main page and of the settings pages' life cycle.
namespace MainGuiVariables
{

const VariableIdentifier kBrowsingProtectionState("@BrowsingProtection\\Data:browsing_protection_state");
const VariableIdentifier kBrowsingProtectionReadOnly("@BrowsingProtection\\Data:browsing_protection_state_readonly");
const VariableIdentifier kBrowsingProtectionStatus("@BrowsingProtection\\Data:browsing_protection_status");
const VariableIdentifier kBankingProtectionState("@SafeBanking\\Data:banking_protection_state");
const VariableIdentifier kBankingProtectionReadOnly("@SafeBanking\\Data:banking_protection_state_readonly");
const VariableIdentifier kBankingProtectionStatus("@SafeBanking\\Data:banking_protection_status");
const VariableIdentifier kWebFilterState("@ContentControl\\Data:current_user_web_page_filter_switch_state");
const VariableIdentifier kWebFilterStatus("@ContentControl\\Status:current_user_web_page_filter_status");
const VariableIdentifier kTimeLimitState("@TimeLimit\\Data:time_limit_state");
const VariableIdentifier kTimeLimitStatus("@TimeLimit\\Data:time_limit_status");
const VariableIdentifier kSafeSearchState("@SafeSearch\\Data:safe_search_state");
const VariableIdentifier kSafeSearchStatus("@SafeSearch\\Data:safe_search_status");
const VariableIdentifier kStatusLevel("@ContentControl\\Status:status_level");
const VariableIdentifier kMainStatus("@ContentControl\\Status:main_status");
const VariableIdentifier kSubStatus("@ContentControl\\Status:sub_status");
const VariableIdentifier kBrowserExtensionDisabled("@ContentControl\\Status:browser_extension_disabled");
const VariableIdentifier kDefaultBrowserType("@ContentControl\\Status:default_browser_type");
const VariableIdentifier kMainGuiVisible("@Veridan\\MainGUI:visible");

const VariableIdentifier kShowWebsiteList("@ContentControl\\Triggers:show_website_list");
const VariableIdentifier kCloseWebsiteList("@ContentControl\\Triggers:close_website_list");
const VariableIdentifier kShowAddWebsites("@ContentControl\\Triggers:show_add_websites_from_browser");
const VariableIdentifier kCloseAddWebsites("@ContentControl\\Triggers:close_add_websites_from_browser");
const VariableIdentifier kLaunchSupportTool("@ContentControl\\Triggers:launch_support_tool");
const VariableIdentifier kSaveAllowedUrl("@ContentControl\\Triggers:save_allowed_url");
const VariableIdentifier kSaveMyLinksUrl("@ContentControl\\Triggers:save_mylinks_url");
const VariableIdentifier kRequestShowWebsiteList("@ContentControl\\Triggers:request_show_website_list");
const VariableIdentifier kRequestShowAddWebsites("@ContentControl\\Triggers:request_show_add_websites_dialog");
const VariableIdentifier kRequestShowTimeLimitWizard("@ContentControl\\Triggers:request_show_tl_wizard");

const VariableIdentifier kRequestShowSettings("@Veridan\\Settings\\Triggers:request_show_settings_ui");
const VariableIdentifier kRequestShowWebFilter("@Veridan\\Settings\\Triggers:request_show_wf_page");
const VariableIdentifier kRequestShowTimeLimit("@Veridan\\Settings\\Triggers:request_show_tl_page");
const VariableIdentifier kRequestShowSafeSearch("@Veridan\\Settings\\Triggers:request_show_safesearch_page");
const VariableIdentifier kShowSettings("@Veridan\\Settings\\Triggers:show_settings_ui");
const VariableIdentifier kShowBrowsingProtection("@Veridan\\Settings\\Triggers:show_bp_page");
const VariableIdentifier kShowTimeLimit("@Veridan\\Settings\\Triggers:show_tl_page");
const VariableIdentifier kShowWebFilter("@Veridan\\Settings\\Triggers:show_wf_page");
const VariableIdentifier kShowBankingProtection("@Veridan\\Settings\\Triggers:show_bankingprotection_page");
const VariableIdentifier kShowSafeSearch("@Veridan\\Settings\\Triggers:show_safesearch_page");
const VariableIdentifier kShowBrowserExtensions("@Veridan\\Settings\\Triggers:show_browser_ext_page");
const VariableIdentifier kShowSecuritySettings("@Triggers\\Settings:security");
const VariableIdentifier kSettingsClosed("@Veridan\\Settings\\Triggers:settings_ui_closed");
const VariableIdentifier kSecuritySettingsClosed("@CompSec\\Settings\\Triggers:ui_closed");
const VariableIdentifier kLoadData("@Veridan\\Settings\\Triggers:load_data");
const VariableIdentifier kSave("@Veridan\\Settings\\Triggers:save");

const VariableIdentifier kSettingsSave("@VDNSettings:save");
const VariableIdentifier kSaveResult("@VDNSettings:saveResult");
const VariableIdentifier kSaveResultReceiver("@VDNSettings:saveResultReceiver");
const VariableIdentifier kSaveResultNotifier("@VDNSettings:saveResultNotifier");
const VariableIdentifier kShowMainWindow("@Triggers\\Windows:show_main_window");
const VariableIdentifier kLocalizationUpdated("@Localization\\MetaData\\Localization:updated");

} // namespace MainGuiVariables
