#pragma once

#include "settings/binding/SettingArrayItem.h"
#include "settings/binding/StoreTypes.h"
#include "settings/binding/StrataObject.h"
#include "settings/binding/TypeName.h"

#include <set>

namespace Settings
{

/// A range of one day in which use is forbidden, in seconds from the day's midnight; Until is exclusive.
/// 0 h <= From, 0 h < Until <= 24 h.
class Curfew : public StrataSettings::SettingArrayItem
{
public:
    Curfew(int fromHour, int untilHour);
    explicit Curfew(const StrataSettings::StrataObject& record);

    bool WriteTo(StrataSettings::StrataObject& record) const;

    friend bool operator<(const Curfew& left, const Curfew& right) noexcept
    {
        return left.From != right.From ? left.From < right.From : left.Until < right.Until;
    }
    friend bool operator==(const Curfew& left, const Curfew& right) noexcept
    {
        return left.From == right.From && left.Until == right.Until;
    }

    StrataSettings::Seconds From{0};
    StrataSettings::Seconds Until{0};
};

} // namespace Settings

template <>
inline constexpr const wchar_t* StrataSettings::kTypeName<std::set<Settings::Curfew>> = L"std::set<Settings::Curfew>";
