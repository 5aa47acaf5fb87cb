#pragma once

#include "settings/model/Group.h"

namespace Settings
{

/// Web content control.
class WebFiltering : public Group
{
public:
    explicit WebFiltering(Model* parent) : Group(parent) {}

    Property<bool> activated{this, L"windows.browsing_protection.web_content_control.activated", true};
    Property<bool> childMode{this, L"windows.browsing_protection.web_content_control.child_mode", true};
};

} // namespace Settings
