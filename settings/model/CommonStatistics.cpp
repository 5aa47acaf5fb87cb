#include "settings/model/CommonStatistics.h"

#include "logging/FunctionLog.h"

namespace Settings
{

namespace
{

constexpr FunctionLog kGetStatisticsLog(L"Settings::CommonStatistics::GetStatistics");

constexpr std::uint32_t kConstraints = 2;

void Accumulate(std::uint32_t& total, std::int64_t count)
{
    total += static_cast<std::uint32_t>(count);
}

} // namespace

void CommonStatistics::ApplyConstraints(OrbStrataHandle handle)
{
    ForEachProperty([handle](StrataSettings::PropertyBase& property) {
        if (property.IsEnforced() || property.State() == StrataSettings::ModificationState::Changed)
            return;
        const bool constrained =
            OrbStrata_SetConstraints(handle, property.GetKey().c_str(), kConstraints) == ORB_STRATA_SUCCESS;
        if (constrained && property.WasReadWhole())
            property.MarkChanged();
    });
}

void CommonStatistics::GetStatistics(std::uint32_t range, std::uint32_t& websitesChecked,
                                     std::uint32_t& bankingSessions, std::uint32_t& harmfulBlocks,
                                     std::uint32_t& wtsScans, std::uint32_t& wtsBlocks, std::int32_t today) const
{
    const std::lock_guard lock(m_statisticsMutex);
    // The day before the first one that counts wraps at 32 bits: a range longer than `today` selects nothing.
    const std::int64_t dayBefore = static_cast<std::uint32_t>(today) - range;
    const std::size_t size = dailyCounters.Inspect([&](const std::set<DailyCounter>& days) {
        for (const DailyCounter& day : days)
        {
            if (range != kAllDays && (day.JulianDate > today || day.JulianDate <= dayBefore))
                continue;
            Accumulate(websitesChecked, day.websitesChecked);
            Accumulate(bankingSessions, day.bankingSessions);
            Accumulate(harmfulBlocks, day.harmfulBlocks);
            Accumulate(wtsScans, day.wtsScans);
            Accumulate(wtsBlocks, day.wtsBlocks);
        }
        return days.size();
    });
    LOG(kGetStatisticsLog, 5, L"%s: range=%d, julian=%d, dailies size=%Iu, wtsScans=%u", range, today, size, wtsScans);
}

} // namespace Settings
