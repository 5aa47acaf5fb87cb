#include "platform/Clock.h"

#include "platform/win32/Win32.h"

#include <ctime>

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
        const __time64_t time = secondsSinceEpoch;
        std::tm result{};
        const auto error = static_cast<std::uint32_t>(::_localtime64_s(&result, &time));
        if (error == 0)
        {
            local = {result.tm_year + 1900,
                     result.tm_mon + 1,
                     result.tm_mday,
                     result.tm_hour,
                     result.tm_min,
                     result.tm_sec,
                     0};
        }
        return error;
    }
};

} // namespace

template <>
Clock& System<Clock>()
{
    return Detail::Undying<WindowsClock>();
}

} // namespace Platform
