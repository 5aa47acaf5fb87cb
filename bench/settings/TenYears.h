#pragma once

#include "settings/model/DailyCounter.h"

#include <cstdint>
#include <set>

constexpr std::int64_t kTenYears = 3'653; // days

/// As many days up to and including `last`, a Julian day number.
inline std::set<Settings::DailyCounter> TenYearsUntil(std::int64_t last)
{
    std::set<Settings::DailyCounter> days;
    for (std::int64_t day = last - kTenYears + 1; day <= last; ++day)
    {
        Settings::DailyCounter counter(day);
        counter.websitesChecked = day % 1000;
        counter.bankingSessions = day % 5;
        counter.harmfulBlocks = day % 7;
        counter.wtsScans = day % 100;
        counter.wtsBlocks = day % 3;
        days.insert(counter);
    }
    return days;
}

/// The least that counting can be: every day's numbers added up.
inline std::uint32_t SumOf(const std::set<Settings::DailyCounter>& days)
{
    std::int64_t sum = 0;
    for (const Settings::DailyCounter& day : days)
        sum += day.websitesChecked + day.bankingSessions + day.harmfulBlocks + day.wtsScans + day.wtsBlocks;
    return static_cast<std::uint32_t>(sum);
}
