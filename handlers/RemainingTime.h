#pragma once

#include "settings/model/Internal.h"
#include "settings/model/Time.h"

#include <optional>

namespace TimeUtil
{

/// How long use is allowed on the local day of a point in time: that weekday's quota while quotas are switched on, else
/// the whole day. The whole day, too, for the zero time point and for a time that the system cannot convert, which is
/// logged.
StrataSettings::Seconds DayOfWeek(const Settings::Time& settings, StrataSettings::TimePoint time);

} // namespace TimeUtil

/// The whole minutes that may still be used today, of the mode that has the least; rounded up, not below 0. Nothing:
/// the day ends first.
std::optional<int> MinutesRemaining(const Settings::Time& settings, const Settings::Internal& tracking,
                                    StrataSettings::TimePoint now);
