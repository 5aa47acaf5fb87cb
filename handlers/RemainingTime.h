#pragma once

#include "settings/model/Internal.h"
#include "settings/model/Time.h"

#include <optional>

/// The whole minutes that may still be used today, of the mode that has the least; rounded up, not below 0. Nothing:
/// the day ends first.
std::optional<int> MinutesRemaining(const Settings::Time& settings, const Settings::Internal& tracking,
                                    StrataSettings::TimePoint now);
