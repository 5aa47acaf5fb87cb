#pragma once

#include "settings/model/DayOfWeek.h"
#include "settings/model/Group.h"

namespace Settings
{

/// How long use is allowed on one day: 0 h <= Duration <= 24 h.
class Quota : public Group
{
public:
    Quota(Model* parent, const wchar_t* day) : Quota(parent, day, std::chrono::hours(24)) {}
    Quota(Model* parent, const wchar_t* day, Seconds duration);

    Property<bool> enabled;
    Property<Seconds> Duration;
};

/// The days' quotas.
class Quotas : public Group
{
public:
    explicit Quotas(Model* parent) : Group(parent) {}

    using Days = std::array<Quota, kDaysInWeek>;

    Property<bool> enabled{this, L"common.time.quota.enabled", false};
    Days days = MakeDays(std::make_index_sequence<kDaysInWeek>()); // Sunday = 0 to Saturday = 6

private:
    template <std::size_t... Day>
    Days MakeDays(std::index_sequence<Day...>)
    {
        return {{{this, kDayNames[Day]}...}};
    }
};

} // namespace Settings
