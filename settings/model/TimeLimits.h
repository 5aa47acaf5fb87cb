#pragma once

#include "settings/model/Group.h"

namespace Settings
{

/// What the limits of Time apply to.
class TimeLimits : public Group
{
public:
    explicit TimeLimits(Model* parent) : Group(parent) {}

    Property<bool> activated{this, L"windows.browsing_protection.time_limits.activated", true};
    Property<bool> limitBrowsingOnly{this, L"windows.browsing_protection.time_limits.limit_browsing_only", false};
};

} // namespace Settings
