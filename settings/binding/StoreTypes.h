#pragma once

#include <chrono>
#include <cstdint>
#include <ratio>

namespace StrataSettings
{

/// Durations and points in time as settings hold them. The store knows them as 64-bit counts: minutes, seconds, and
/// ticks of 100 ns since the system clock's epoch.
using Minutes = std::chrono::duration<int, std::ratio<60>>;
using Seconds = std::chrono::duration<std::int64_t>;
using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;
using TimePoint = std::chrono::time_point<std::chrono::system_clock, Ticks>;

} // namespace StrataSettings
