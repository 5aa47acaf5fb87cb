#include "platform/Clock.h"

#include <atomic>
#include <cerrno>
#include <ctime>

namespace Platform
{

namespace
{

constexpr std::int64_t Quarter = 15 * 60;
constexpr std::int64_t Day = 24 * 60 * 60;

bool OffsetAt(std::time_t time, std::int64_t& seconds)
{
    std::tm local{};
    if (::localtime_r(&time, &local) == nullptr)
        return false;
    seconds = local.tm_gmtoff;
    return true;
}

/// The seconds that local time is ahead of UTC. They change at quarters of an hour only, so that one look-up serves a
/// quarter; besides, the system's look-up takes a lock that a process forked meanwhile would find held for ever.
std::int64_t CachedOffset(std::int64_t time)
{
    constexpr int OffsetBits = 20;
    constexpr std::int64_t OffsetBias = std::int64_t{1} << (OffsetBits - 1);
    static std::atomic<std::int64_t> s_cache{-1}; // the quarter's number, and the biased offset

    const std::int64_t quarter = time / Quarter;
    const std::int64_t cached = s_cache.load(std::memory_order_relaxed);
    if (cached >= 0 && cached >> OffsetBits == quarter)
        return (cached & ((std::int64_t{1} << OffsetBits) - 1)) - OffsetBias;
    ::tzset();
    std::int64_t offset = 0;
    OffsetAt(static_cast<std::time_t>(time), offset);
    s_cache.store((quarter << OffsetBits) | (offset + OffsetBias), std::memory_order_relaxed);
    return offset;
}

/// The proleptic Gregorian calendar, in eras of 400 years that begin in March.
CalendarTime Calendar(std::int64_t seconds, int millisecond)
{
    const std::int64_t days = (seconds >= 0 ? seconds : seconds - Day + 1) / Day;
    const auto secondOfDay = static_cast<int>(seconds - days * Day);

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
        return Calendar(now.tv_sec, static_cast<int>(now.tv_nsec / 1000000));
    }

    CalendarTime LocalTime() override
    {
        const timespec now = Now();
        return Calendar(now.tv_sec + CachedOffset(now.tv_sec), static_cast<int>(now.tv_nsec / 1000000));
    }

    bool UtcOffset(int& minutes) override
    {
        ::tzset();
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
    return Detail::Undying<PosixClock>();
}

} // namespace Platform
