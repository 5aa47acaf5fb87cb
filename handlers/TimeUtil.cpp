#include "handlers/TimeUtil.h"

#include "logging/FunctionLog.h"
#include "platform/Clock.h"

#include <QDate>

namespace TimeUtil
{

using StrataSettings::Seconds;
using StrataSettings::TimePoint;

namespace
{

/// The system's error, 0 for none.
template <typename Point>
std::uint32_t ToLocal(Point time, Platform::CalendarTime& local)
{
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time.time_since_epoch()).count();
    return Platform::Get<Platform::Clock>().ToLocal(seconds, local);
}

} // namespace

int MinutesUntilMidnight(std::chrono::system_clock::time_point time)
{
    const FunctionLog log(L"TimeUtil::MinutesUntilMidnight");
    Platform::CalendarTime local{};
    if (const std::uint32_t error = ToLocal(time, local); error != 0)
    {
        LOG(log, 3, L"%s: Failed to convert time point to calendar time %d", error);
        return 0;
    }
    return (24 - local.hour) * 60 - local.minute;
}

Seconds DayOfWeek(const Settings::Time& settings, TimePoint time)
{
    const FunctionLog log(L"TimeUtil::DayOfWeek");
    if (time == TimePoint() || !settings.quotas.enabled.Get())
        return std::chrono::hours(24);
    Platform::CalendarTime local{};
    if (const std::uint32_t error = ToLocal(time, local); error != 0)
    {
        LOG(log, 2, L"%s: localtime_s returned %d", error);
        return std::chrono::hours(24);
    }
    const int day = QDate(local.year, local.month, local.day).dayOfWeek() % Settings::kDaysInWeek; // Sunday is 7 in Qt
    return settings.quotas.days[static_cast<std::size_t>(day)].Duration.Get();
}

} // namespace TimeUtil
