#pragma once

#include "tests/handlers/HandlerTest.h"

namespace Ids
{

inline constexpr const char* kVisible = "@Veridan\\MainGUI:visible";
inline constexpr const char* kWebFilter = "@ContentControl\\Data:current_user_web_page_filter_switch_state";
inline constexpr const char* kWebFilterStatus = "@ContentControl\\Status:current_user_web_page_filter_status";
inline constexpr const char* kTimeLimit = "@TimeLimit\\Data:time_limit_state";
inline constexpr const char* kTimeLimitStatus = "@TimeLimit\\Data:time_limit_status";
inline constexpr const char* kSafeSearch = "@SafeSearch\\Data:safe_search_state";
inline constexpr const char* kSafeSearchStatus = "@SafeSearch\\Data:safe_search_status";
inline constexpr const char* kStatusLevel = "@ContentControl\\Status:status_level";
inline constexpr const char* kMainStatus = "@ContentControl\\Status:main_status";
inline constexpr const char* kSubStatus = "@ContentControl\\Status:sub_status";
inline constexpr const char* kRequestSettings = "@Veridan\\Settings\\Triggers:request_show_settings_ui";
inline constexpr const char* kRequestWebsiteList = "@ContentControl\\Triggers:request_show_website_list";
inline constexpr const char* kRequestAddWebsites = "@ContentControl\\Triggers:request_show_add_websites_dialog";
inline constexpr const char* kSettingsClosed = "@Veridan\\Settings\\Triggers:settings_ui_closed";
inline constexpr const char* kSaveAllowedUrl = "@ContentControl\\Triggers:save_allowed_url";
inline constexpr const char* kSaveMyLinksUrl = "@ContentControl\\Triggers:save_mylinks_url";

} // namespace Ids

namespace Keys
{

inline constexpr const wchar_t* kBrowsingProtection = L"windows.browsing_protection.enabled";
inline constexpr const wchar_t* kBankingProtection = L"windows.browsing_protection.banking_protection.enabled";
inline constexpr const wchar_t* kDigiParenting = L"common.digiparenting.activated";
inline constexpr const wchar_t* kContent = L"common.content.enabled";
inline constexpr const wchar_t* kTime = L"common.time.enabled";
inline constexpr const wchar_t* kQuota = L"common.time.quota.enabled";
inline constexpr const wchar_t* kSearchFilter = L"windows.browsing_protection.search_result_filter.enabled";
inline constexpr const wchar_t* kSafeSearch = L"common.content.safesearch_enabled";
inline constexpr const wchar_t* kMainGuiOpen = L"windows.browsing_protection.internal.main_gui_open";
inline constexpr const wchar_t* kSites = L"windows.browsing_protection.internal.sites.list";
inline constexpr const wchar_t* kExtensionDisabled =
    L"windows.browsing_protection.internal.default_browser_extension_disabled";
inline constexpr const wchar_t* kBrowserType = L"windows.browsing_protection.internal.default_browser_type";

} // namespace Keys

class MainGuiTest : public HandlerTest
{
protected:
    /// What was set but for the status: the host tells the handler of its own writes, too, and each of a switch's state
    /// brings the status anew.
    RecordingHost::Record SetsBesideStatus()
    {
        RecordingHost::Record sets = m_host.Take("set");
        const auto isStatus = [](const std::string& name) {
            return name == "status_level" || name == "main_status" || name == "sub_status";
        };
        sets.erase(std::remove_if(sets.begin(), sets.end(), isStatus), sets.end());
        return sets;
    }
};
