#pragma once

#include "settings/model/Time.h"

#include <chrono>

namespace TimeUtil
{

/// The minutes that are left of the local calendar day at a point in time, seconds ignored: 1440 at 00:00, 1 at 23:59.
/// 0, and a line in the log, when the system does not know the local time.
int MinutesUntilMidnight(std::chrono::system_clock::time_point time);

/// How long use is allowed on the local day of a point in time: that weekday's quota while quotas are switched on, else
/// the whole day. The whole day, too, for the zero time point and for a time that the system cannot convert, which is
/// logged.
StrataSettings::Seconds DayOfWeek(const Settings::Time& settings, StrataSettings::TimePoint time);

} // namespace TimeUtil
