#pragma once

#include "settings/model/Group.h"

namespace Settings
{

/// Blocking of websites by their IP address.
class IpBasedBlocking : public Group
{
public:
    explicit IpBasedBlocking(Model* parent) : Group(parent) {}

    Property<bool> activated{this, L"windows.browsing_protection.ip_based_blocking.activated", false};
    Property<bool> enabled{this, L"windows.browsing_protection.ip_based_blocking.enabled", false};
};

} // namespace Settings
