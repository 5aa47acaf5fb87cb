#pragma once

#include "settings/model/Addresses.h"
#include "settings/model/Group.h"

namespace Settings
{

/// Use of the Fragfinn children's web service.
class Fragfinn : public Group
{
public:
    explicit Fragfinn(Model* parent) : Group(parent) {}

    Property<bool> activated{this, L"windows.browsing_protection.fragfinn.activated", false};
    Property<bool> enabled{this, L"windows.browsing_protection.fragfinn.enabled", false};
    Property<std::string> url{this, L"windows.browsing_protection.fragfinn.url", Addresses::kFragfinnHost};
    Property<std::string> category{this, L"windows.browsing_protection.fragfinn.category", "fragfinn"};
};

} // namespace Settings
