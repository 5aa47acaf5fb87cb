#include "platform/Clock.h"

#include "platform/win32/Win32.h"

#include <limits>

namespace Platform
{

namespace
{

CalendarTime Calendar(const SYSTEMTIME& time)
{
    return {time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond, time.wMilliseconds};
}

class WindowsClock : public Clock
{
public:
    CalendarTime UtcTime() override
    {
        SYSTEMTIME time;
        ::GetSystemTime(&time);
        return Calendar(time);
    }

    CalendarTime LocalTime() override
    {
        SYSTEMTIME time;
        ::GetLocalTime(&time);
        return Calendar(time);
    }

    bool UtcOffset(int& minutes) override
    {
        TIME_ZONE_INFORMATION zone;
        const DWORD state = ::GetTimeZoneInformation(&zone);
        if (state == TIME_ZONE_ID_INVALID)
            return false;
        minutes =
            -static_cast<int>(zone.Bias + (state == TIME_ZONE_ID_DAYLIGHT ? zone.DaylightBias : zone.StandardBias));
        return true;
    }

    std::uint32_t ToLocal(std::int64_t secondsSinceEpoch, CalendarTime& local) override
    {
        constexpr std::int64_t kEpoch = 11'644'473'600; // in seconds since 1601, where the system's count begins
        constexpr std::int64_t kTicksPerSecond = 10'000'000;
        constexpr std::int64_t kLatest = std::numeric_limits<std::int64_t>::max() / kTicksPerSecond - kEpoch;
        if (secondsSinceEpoch < -kEpoch || secondsSinceEpoch > kLatest)
            return ERROR_INVALID_PARAMETER;
        const auto ticks = static_cast<std::uint64_t>((secondsSinceEpoch + kEpoch) * kTicksPerSecond);
        const FILETIME time{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
        SYSTEMTIME utc;
        SYSTEMTIME result;
        // Not the C library, which keeps the zone that it has read first.
        if (!::FileTimeToSystemTime(&time, &utc) || !::SystemTimeToTzSpecificLocalTime(nullptr, &utc, &result))
            return ::GetLastError();
        local = Calendar(result);
        return 0;
    }
};

} // namespace

template <>
Clock& System<Clock>()
{
    return Detail::NoDestructor<WindowsClock>();
}

} // namespace Platform
