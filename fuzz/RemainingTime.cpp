// What is left of a day's allowance, from any numbers that the store may hold.

#include "handlers/RemainingTime.h"
#include "fuzz/Numbers.h"
#include "fuzz/Target.h"
#include "settings/model/VdnSettings.h"

namespace
{

using StrataSettings::Seconds;
using StrataSettings::Ticks;
using StrataSettings::TimePoint;

constexpr std::int64_t kMinutesInDay = 1440;
constexpr std::int64_t kCentury = std::int64_t{100} * 365 * 86'400;

/// The clock is the system's and is not hostile.
TimePoint Now(std::int64_t number)
{
    return TimePoint(Seconds((number % kCentury + kCentury) % kCentury));
}

void Read(Settings::TimeLimitTrackingData& mode, Numbers& numbers)
{
    mode.lastUpdate.Set(TimePoint(Ticks(numbers.Next())));
    mode.duration.Set(Seconds(numbers.Next()));
    mode.extension.Set(TimePoint(Ticks(numbers.Next())));
}

const Target kTarget("remaining_time", [](std::string_view input) {
    Numbers numbers(input);
    VdnSettings tree;
    const TimePoint now = Now(numbers.Next());
    tree.time.quotas.enabled.Set(true);
    const Seconds allowance(numbers.Next());
    for (Settings::Quota& quota : tree.time.quotas.days)
        quota.Duration.Set(allowance);
    Read(tree.internal.deviceMode, numbers);
    Read(tree.internal.browserMode, numbers);
    const std::optional<int> minutes = MinutesRemaining(tree.time, tree.internal, now);
    Require(!minutes || (*minutes >= 0 && *minutes < kMinutesInDay), "what remains ends before the day does");
});

} // namespace
