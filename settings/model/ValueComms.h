#pragma once

#include "settings/model/Group.h"

namespace Settings
{

/// The suite's own statistics.
class ValueComms : public Group
{
public:
    explicit ValueComms(Model* parent) : Group(parent) {}

    Property<bool> activated{this, L"windows.computer_security.internal.statistics.activated", false};
    Property<std::int64_t> startTime{this, L"windows.computer_security.internal.statistics.start_time", 0};
};

} // namespace Settings
