#include "handlers/RemainingTime.h"

#include "handlers/LocalTime.h"
#include "handlers/TimeUtil.h"

#include <algorithm>

using StrataSettings::Seconds;
using StrataSettings::TimePoint;

namespace
{

constexpr Seconds kWholeDay = std::chrono::hours(24);

/// What a mode leaves of the allowance: what is not used up yet, and at least the time until its extension ends.
Seconds Remaining(Seconds allowance, const Settings::TimeLimitTrackingData& mode, TimePoint now)
{
    const bool usedToday = LocalTime::At(mode.lastUpdate.Get()).date() == LocalTime::At(now).date();
    const Seconds used = usedToday ? std::clamp(mode.duration.Get(), Seconds(0), kWholeDay) : Seconds(0);
    const TimePoint extendedUntil = std::max(mode.extension.Get(), now);
    return std::max({allowance - used, std::chrono::ceil<Seconds>(extendedUntil - now), Seconds(0)});
}

} // namespace

std::optional<int> MinutesRemaining(const Settings::Time& settings, const Settings::Internal& tracking, TimePoint now)
{
    const Seconds allowance = std::clamp(TimeUtil::DayOfWeek(settings, now), Seconds(0), kWholeDay);
    const Seconds remaining =
        std::min(Remaining(allowance, tracking.deviceMode, now), Remaining(allowance, tracking.browserMode, now));
    const auto minutes = std::chrono::ceil<std::chrono::minutes>(remaining).count();
    const auto untilMidnight =
        TimeUtil::MinutesUntilMidnight(std::chrono::time_point_cast<std::chrono::system_clock::duration>(now));
    if (minutes >= untilMidnight)
        return std::nullopt;
    return static_cast<int>(minutes);
}
