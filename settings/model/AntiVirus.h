#pragma once

#include "settings/model/Group.h"

namespace Settings
{

/// Scanning of web traffic.
class AntiVirus : public Group
{
public:
    explicit AntiVirus(Model* parent) : Group(parent) {}

    Property<bool> enabled{this, L"windows.web_traffic_scanning.enabled", true};
};

} // namespace Settings
