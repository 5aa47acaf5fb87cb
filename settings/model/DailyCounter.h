#pragma once

#include "settings/binding/SettingArrayItem.h"
#include "settings/binding/StrataObject.h"
#include "settings/binding/TypeName.h"

#include <cstdint>
#include <set>

namespace Settings
{

/// What protection did on one day. In a set it is known by its day.
class DailyCounter : public StrataSettings::SettingArrayItem
{
public:
    explicit DailyCounter(std::int64_t julianDate) : JulianDate(julianDate) {}
    explicit DailyCounter(const StrataSettings::StrataObject& record);

    bool WriteTo(StrataSettings::StrataObject& record) const;

    friend bool operator<(const DailyCounter& left, const DailyCounter& right) noexcept
    {
        return left.JulianDate < right.JulianDate;
    }
    friend bool operator==(const DailyCounter& left, const DailyCounter& right) noexcept
    {
        return left.JulianDate == right.JulianDate && left.websitesChecked == right.websitesChecked &&
               left.bankingSessions == right.bankingSessions && left.harmfulBlocks == right.harmfulBlocks &&
               left.wtsScans == right.wtsScans && left.wtsBlocks == right.wtsBlocks;
    }

    std::int64_t JulianDate = 0; // Julian day number, not negative
    std::int64_t websitesChecked = 0;
    std::int64_t bankingSessions = 0;
    std::int64_t harmfulBlocks = 0;
    std::int64_t wtsScans = 0;  // web-traffic scans
    std::int64_t wtsBlocks = 0; // web-traffic blocks
};

} // namespace Settings

template <>
inline constexpr const wchar_t* StrataSettings::kTypeName<std::set<Settings::DailyCounter>> =
    L"std::set<Settings::DailyCounter>";
