#pragma once

#include "settings/model/Group.h"
#include "settings/model/PrivacyProtectedSite.h"

namespace Settings
{

/// Protection of banking sessions.
class BankingProtection : public Group
{
public:
    explicit BankingProtection(Model* parent) : Group(parent) {}

    Property<bool> activated{this, L"windows.browsing_protection.banking_protection.activated", true};
    Property<bool> enabled{this, L"windows.browsing_protection.banking_protection.enabled", true};
    Property<bool> allowAllInternetConnections{
        this, L"windows.browsing_protection.banking_protection.allow_all_internet_connections", false};
    Property<int> ipQueryLimitPerSession{
        this, L"windows.browsing_protection.banking_protection.ip_query_limit_per_session", 10000};
    Property<int> ipQueryLimitPerProcess{
        this, L"windows.browsing_protection.banking_protection.ip_query_limit_per_process", 1000};
    Property<bool> clearClipboardAfterSession{
        this, L"windows.browsing_protection.banking_protection.clear_clipboard_after_banking_session", true};
    Property<bool> automaticLogoutActivated{
        this, L"windows.browsing_protection.banking_protection.automatic_logout.activated", true};
    PropertySet<PrivacyProtectedSite> privacyProtectedSites{
        this, L"windows.browsing_protection.banking_protection.privacyprotected_sites"};
};

} // namespace Settings
