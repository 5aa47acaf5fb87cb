#pragma once

#include "settings/model/Curfew.h"
#include "settings/model/CurfewOption.h"
#include "settings/model/DayOfWeek.h"
#include "settings/model/Group.h"

namespace Settings
{

/// The ranges of each day in which use is forbidden.
class Curfews : public Group
{
public:
    explicit Curfews(Model* parent) : Group(parent) {}

    using Days = std::array<PropertySet<Curfew>, kDaysInWeek>;

    Property<bool> enabled{this, L"common.time.curfew.enabled", false};
    Days days = MakeDays(std::make_index_sequence<kDaysInWeek>()); // Sunday = 0 to Saturday = 6
    SchoolNights schoolNights{this};
    Weekends weekends{this};

private:
    template <std::size_t... Day>
    Days MakeDays(std::index_sequence<Day...>)
    {
        return {{{this, std::wstring(L"common.time.curfew.") + kDayNames[Day] + L".ranges"}...}};
    }
};

} // namespace Settings
