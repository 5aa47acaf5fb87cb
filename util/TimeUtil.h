#pragma once

#include <chrono>

namespace TimeUtil
{

/// The minutes that are left of the local calendar day at a point in time, seconds ignored: 1440 at 00:00, 1 at 23:59.
/// 0, and a line in the log, when the system does not know the local time.
int MinutesUntilMidnight(std::chrono::system_clock::time_point time);

} // namespace TimeUtil
