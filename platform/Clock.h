#pragma once

#include "platform/Service.h"

#include <cstdint>

namespace Platform
{

struct CalendarTime
{
    int year;
    int month; ///< 1 to 12
    int day;   ///< 1 to 31
    int hour;
    int minute;
    int second;
    int millisecond;
};

/// The system's time and time zone. Any thread.
class Clock
{
public:
    virtual ~Clock() = default;

    virtual CalendarTime UtcTime() = 0;
    virtual CalendarTime LocalTime() = 0;

    /// Minutes that local time is ahead of UTC now. False: the system does not tell.
    virtual bool UtcOffset(int& minutes) = 0;

    /// The local time of a point in time, in seconds since the epoch of 1970. Returns 0 or the system's error number.
    virtual std::uint32_t ToLocal(std::int64_t secondsSinceEpoch, CalendarTime& local) = 0;
};

template <>
Clock& System<Clock>();

} // namespace Platform
