#include "handlers/LocalTime.h"

#include "platform/Clock.h"

namespace LocalTime
{

namespace
{

/// Wall-clock time counted as if it were UTC: what daylight saving skips or repeats is a time like any other.
QDateTime Naive(const Platform::CalendarTime& time)
{
    return QDateTime(QDate(time.year, time.month, time.day),
                     QTime(time.hour, time.minute, time.second, time.millisecond), Qt::UTC);
}

} // namespace

StrataSettings::TimePoint Now()
{
    const QDateTime utc = Naive(Platform::Get<Platform::Clock>().UtcTime());
    return StrataSettings::TimePoint(std::chrono::milliseconds(utc.toMSecsSinceEpoch()));
}

QDate Today()
{
    return Naive(Platform::Get<Platform::Clock>().LocalTime()).date();
}

std::chrono::milliseconds UntilMidnight()
{
    const QDateTime now = Naive(Platform::Get<Platform::Clock>().LocalTime());
    return std::chrono::milliseconds(now.msecsTo(QDateTime(now.date().addDays(1), QTime(0, 0), Qt::UTC)));
}

QDateTime At(StrataSettings::TimePoint time)
{
    Platform::CalendarTime local{};
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time.time_since_epoch()).count();
    return Platform::Get<Platform::Clock>().ToLocal(seconds, local) == 0 ? Naive(local) : QDateTime();
}

} // namespace LocalTime
