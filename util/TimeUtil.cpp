#include "util/TimeUtil.h"

#include "logging/FunctionLog.h"
#include "platform/Clock.h"

namespace TimeUtil
{

int MinutesUntilMidnight(std::chrono::system_clock::time_point time)
{
    constexpr FunctionLog log(L"TimeUtil::MinutesUntilMidnight");
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time.time_since_epoch()).count();
    Platform::CalendarTime local{};
    const std::uint32_t error = Platform::Get<Platform::Clock>().ToLocal(seconds, local);
    if (error != 0)
    {
        LOG(log, 3, L"%s: Failed to convert time point to calendar time %d", error);
        return 0;
    }
    return (24 - local.hour) * 60 - local.minute;
}

} // namespace TimeUtil
