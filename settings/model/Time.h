#pragma once

#include "settings/model/Curfews.h"
#include "settings/model/Group.h"
#include "settings/model/Quotas.h"

namespace Settings
{

/// When and for how long the computer may be used.
class Time : public Group
{
public:
    explicit Time(Model* parent) : Group(parent) {}

    Property<bool> enabled{this, L"common.time.enabled", false};
    Curfews curfews{this};
    Quotas quotas{this};
};

} // namespace Settings
