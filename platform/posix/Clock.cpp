#include "platform/Clock.h"

#include <atomic>
#include <cerrno>
#include <ctime>
#include <limits>

namespace Platform
{

namespace
{

constexpr std::int64_t kDay = 24 * 60 * 60;

std::atomic<std::int64_t> g_cache{-1}; // a second since 1970 and its biased offset

/// The seconds that local time is ahead of UTC, in the zone that the system has now.
bool OffsetAt(std::time_t time, std::int64_t& seconds)
{
    g_cache.store(-1, std::memory_order_relaxed); // the zone may be another
    ::tzset();
    std::tm local{};
    if (!::localtime_r(&time, &local))
        return false;
    seconds = local.tm_gmtoff;
    return true;
}

/// The same for the present second, which each log line asks for: the system is asked once a second. It takes a lock to
/// answer, which a process forked meanwhile would find held for ever.
std::int64_t OffsetOfNow(std::int64_t now)
{
    constexpr int kOffsetBits = 20;
    constexpr std::int64_t kOffsetBias = std::int64_t{1} << (kOffsetBits - 1);
    const std::int64_t cached = g_cache.load(std::memory_order_relaxed);
    if (cached >= 0 && cached >> kOffsetBits == now)
        return (cached & ((std::int64_t{1} << kOffsetBits) - 1)) - kOffsetBias;
    std::int64_t offset = 0;
    OffsetAt(static_cast<std::time_t>(now), offset);
    g_cache.store((now << kOffsetBits) | (offset + kOffsetBias), std::memory_order_relaxed);
    return offset;
}

/// The proleptic Gregorian calendar, in eras of 400 years that begin in March.
CalendarTime Calendar(std::int64_t seconds, int millisecond)
{
    const std::int64_t days = (seconds >= 0 ? seconds : seconds - kDay + 1) / kDay;
    const auto secondOfDay = static_cast<int>(seconds - days * kDay);

    const std::int64_t fromMarch0 = days + 719468;
    const std::int64_t era = (fromMarch0 >= 0 ? fromMarch0 : fromMarch0 - 146096) / 146097;
    const auto dayOfEra = static_cast<int>(fromMarch0 - era * 146097);
    const int yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const int dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const int monthFromMarch = (5 * dayOfYear + 2) / 153;

    CalendarTime time{};
    time.day = dayOfYear - (153 * monthFromMarch + 2) / 5 + 1;
    time.month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
    time.year = static_cast<int>(yearOfEra + era * 400) + (time.month <= 2 ? 1 : 0);
    time.hour = secondOfDay / 3600;
    time.minute = secondOfDay / 60 % 60;
    time.second = secondOfDay % 60;
    time.millisecond = millisecond;
    return time;
}

/// The calendar of now. Lines of the log come in bursts: a thread keeps what it has worked out for a second.
CalendarTime CalendarOfNow(std::int64_t seconds, long nanoseconds)
{
    thread_local std::int64_t s_seconds = std::numeric_limits<std::int64_t>::min();
    thread_local CalendarTime s_time{};
    if (s_seconds != seconds)
    {
        s_time = Calendar(seconds, 0);
        s_seconds = seconds;
    }
    CalendarTime time = s_time;
    time.millisecond = static_cast<int>(nanoseconds / 1000000);
    return time;
}

timespec Now()
{
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return now;
}

class PosixClock : public Clock
{
public:
    CalendarTime UtcTime() override
    {
        const timespec now = Now();
        return CalendarOfNow(now.tv_sec, now.tv_nsec);
    }

    CalendarTime LocalTime() override
    {
        const timespec now = Now();
        return CalendarOfNow(now.tv_sec + OffsetOfNow(now.tv_sec), now.tv_nsec);
    }

    bool UtcOffset(int& minutes) override
    {
        std::int64_t seconds = 0;
        if (!OffsetAt(Now().tv_sec, seconds))
            return false;
        minutes = static_cast<int>(seconds / 60);
        return true;
    }

    std::uint32_t ToLocal(std::int64_t secondsSinceEpoch, CalendarTime& local) override
    {
        const auto time = static_cast<std::time_t>(secondsSinceEpoch);
        std::int64_t offset = 0;
        if (!OffsetAt(time, offset))
            return static_cast<std::uint32_t>(errno);
        local = Calendar(secondsSinceEpoch + offset, 0);
        return 0;
    }
};

} // namespace

template <>
Clock& System<Clock>()
{
    return Detail::NoDestructor<PosixClock>();
}

} // namespace Platform
