#pragma once

#include "settings/model/Group.h"

namespace Settings
{

/// How much of the day's allowance is used up, in one of two modes: "device_mode" and "browser_mode".
class TimeLimitTrackingData : public Group
{
public:
    TimeLimitTrackingData(Model* parent, const std::wstring& mode)
        : Group(parent), lastUpdate(this, kDataKey + mode + L".last_update", TimePoint()),
          duration(this, kDataKey + mode + L".duration", Seconds(0)),
          extension(this, kDataKey + mode + L".extension", TimePoint()),
          dailyUsage(this, L"windows.browsing_protection.internal.daily_usage_in_" + mode, std::string())
    {}

    Property<TimePoint> lastUpdate;
    Property<Seconds> duration;
    Property<TimePoint> extension;
    Property<std::string> dailyUsage;

private:
    static constexpr const wchar_t* kDataKey = L"windows.browsing_protection.internal.time_limit_data.";
};

} // namespace Settings
