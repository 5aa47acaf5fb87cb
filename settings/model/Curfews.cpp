#include "settings/model/Curfews.h"

#include "logging/FunctionLog.h"

#include <algorithm>

namespace Settings
{

using StrataSettings::SetResult;

namespace
{

constexpr FunctionLog kAddLog(L"Settings::Curfews::Add");
constexpr FunctionLog kToLegacyUiStringLog(L"Settings::Curfews::ToLegacyUiString");

constexpr std::size_t kHoursInDay = 24;
constexpr std::int64_t kSecondsInHour = 3600;
constexpr char kAllowed = '1';
constexpr char kForbidden = '0';

/// The days in the order in which the user interface lists them.
constexpr int kWeekFromMonday[kDaysInWeek] = {1, 2, 3, 4, 5, 6, 0};

bool IsWeek(const std::string& text)
{
    return text.size() == kDaysInWeek * kHoursInDay && text.find_first_not_of("01") == std::string::npos;
}

std::string HoursOf(const std::set<Curfew>& ranges)
{
    std::string hours(kHoursInDay, kAllowed);
    for (const Curfew& range : ranges)
    {
        const std::int64_t from = range.From.count() / kSecondsInHour;
        const std::int64_t until = range.Until.count() / kSecondsInHour;
        if (from < 0 || until < 0 || until > std::int64_t{kHoursInDay})
            LOG(kToLegacyUiStringLog, 2, L"%s: Faulty range: %d/%d", static_cast<int>(from), static_cast<int>(until));
        else
            for (std::int64_t hour = from; hour < until; ++hour)
                hours[static_cast<std::size_t>(hour)] = kForbidden;
    }
    return hours;
}

} // namespace

void Curfews::Add(int day, const Curfew& range)
{
    const bool isDay = day >= 0 && day < kDaysInWeek;
    if (!isDay || days[static_cast<std::size_t>(day)].Insert(range) != SetResult::Stored)
        LOG(kAddLog, 3, L"%s: Failed to emplace '%u / %lld -> %lld' ", day, range.From.count(), range.Until.count());
}

std::string Curfews::ToLegacyUiString() const
{
    std::string week;
    for (const int day : kWeekFromMonday)
        week += HoursOf(days[static_cast<std::size_t>(day)].Get());
    return week;
}

bool Curfews::FromLegacyUiString(const std::string& week, const std::string& given)
{
    if (!IsWeek(week))
        return false;

    for (std::size_t block = 0; block < kDaysInWeek; ++block)
    {
        const int number = kWeekFromMonday[block];
        const auto day = static_cast<std::size_t>(number);
        const std::string hours = week.substr(block * kHoursInDay, kHoursInDay);
        if (given.size() == week.size() && given.compare(block * kHoursInDay, kHoursInDay, hours) == 0)
            continue;
        days[day].Clear();
        std::size_t from = hours.find(kForbidden);
        while (from != std::string::npos)
        {
            const std::size_t until = std::min(hours.find(kAllowed, from), kHoursInDay);
            Add(number, Curfew(static_cast<int>(from), static_cast<int>(until)));
            from = hours.find(kForbidden, until);
        }
    }
    return true;
}

} // namespace Settings
