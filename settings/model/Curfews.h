#pragma once

#include "settings/model/Curfew.h"
#include "settings/model/CurfewOption.h"
#include "settings/model/DayOfWeek.h"
#include "settings/model/Group.h"

#include <string>

namespace Settings
{

/// The ranges of each day in which use is forbidden.
class Curfews : public Group
{
public:
    explicit Curfews(Model* parent) : Group(parent) {}

    using Days = std::array<PropertySet<Curfew>, kDaysInWeek>;

    /// Adds a range to a day, Sunday = 0 to Saturday = 6. An enforced day keeps its ranges.
    void Add(int day, const Curfew& range);

    /// The week as the user interface exchanges it: for each day from Monday to Sunday 24 characters, one for each
    /// hour, "1" where use is allowed and "0" where it is not. An hour counts as forbidden when a range holds its
    /// start, with both ends of the range cut down to whole hours.
    std::string ToLegacyUiString() const;

    /// Replaces the ranges of every day that is not enforced by those of such a text: one for each longest run of "0"
    /// within a day. A day that says the same in `given`, where that is a week, too, stays as it is. False, with
    /// nothing changed, for a text of any other form.
    bool FromLegacyUiString(const std::string& week, const std::string& given = {});

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
