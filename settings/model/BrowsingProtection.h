#pragma once

#include "settings/model/Group.h"

namespace Settings
{

/// Protection against harmful websites. Illegal websites alone are not blocked by default.
class BrowsingProtection : public Group
{
public:
    explicit BrowsingProtection(Model* parent) : Group(parent) {}

    Property<bool> activated{this, L"windows.browsing_protection.activated", true};
    Property<bool> enabled{this, L"windows.browsing_protection.enabled", true};
    Property<bool> blockSuspiciousWebsites{this, L"windows.browsing_protection.block_suspicious_websites", true};
    Property<bool> blockIllegalWebsites{this, L"windows.browsing_protection.block_illegal_websites", false};
    Property<bool> blockHarmfulWebsites{this, L"windows.browsing_protection.block_harmful_websites", true};
    Property<bool> skipActivateExtensions{this, L"windows.browsing_protection.skip_activate_extensions", true};
    Property<bool> showLinkReputations{this, L"windows.browsing_protection.show_link_reputations_on_search_results",
                                       true};
    Property<bool> allowContinueToBlockedPages{
        this, L"windows.browsing_protection.allow_user_to_continue_to_blocked_pages", true};
};

} // namespace Settings
