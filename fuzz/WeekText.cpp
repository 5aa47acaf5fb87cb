// The text of a week's curfews: as a text that a page writes, and as ranges that the store holds.

#include "fuzz/Numbers.h"
#include "fuzz/Target.h"
#include "settings/model/VdnSettings.h"

#include <algorithm>
#include <string>

namespace
{

using Settings::Curfew;
using StrataSettings::Seconds;

void RequireRuns(const Settings::Curfews& curfews)
{
    for (const auto& day : curfews.days)
    {
        Seconds end(-1);
        for (const Curfew& range : day.Get())
        {
            Require(range.From > end && range.Until > range.From, "a text gives ranges that neither meet nor overlap");
            end = range.Until;
        }
    }
}

void ReadString(const std::string& text)
{
    VdnSettings tree;
    Settings::Curfews& curfews = tree.time.curfews;
    const std::string before = curfews.ToLegacyUiString();
    const bool taken = curfews.FromLegacyUiString(text);
    Require(curfews.ToLegacyUiString() == (taken ? text : before), "a text is taken whole or changes nothing");
    RequireRuns(curfews);
}

/// Three numbers for each range: the day, and its two ends as the store has them.
void ReadRanges(Numbers numbers)
{
    VdnSettings tree;
    Settings::Curfews& curfews = tree.time.curfews;
    while (numbers.HasMore())
    {
        const auto day = static_cast<int>(numbers.Next());
        Curfew range(0, 1);
        range.From = Seconds(numbers.Next());
        range.Until = Seconds(numbers.Next());
        curfews.Add(day, range);
    }
    const std::string week = curfews.ToLegacyUiString();
    Require(curfews.FromLegacyUiString(week), "the text of any ranges is the text of a week");
    Require(curfews.ToLegacyUiString() == week, "a week comes back with the same hours");
    RequireRuns(curfews);
}

const Target kTarget("week_text", [](std::string_view input) {
    ReadString(std::string(input));
    ReadRanges(Numbers(input));
});

} // namespace
