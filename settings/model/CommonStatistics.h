#pragma once

#include "settings/model/DailyCounter.h"
#include "settings/model/Group.h"

#include <cstdint>
#include <mutex>

namespace Settings
{

/// Counts of protective work, a day at a time.
class CommonStatistics : public Group
{
public:
    explicit CommonStatistics(Model* parent) : Group(parent) {}

    /// Constrains the group's keys in the store. Each key that was not constrained yet counts as changed afterwards,
    /// so that the next save writes it beside its constraint; but a stored value that could not be read whole is left
    /// as it is.
    void ApplyConstraints(OrbStrataHandle handle) override;

    /// Adds the counts of the last `range` days up to and including `today`, a Julian day number, to the totals; of all
    /// days, future ones too, when the range is kAllDays. Totals wrap at 32 bits. Any thread; one at a time gets in.
    void GetStatistics(std::uint32_t range, std::uint32_t& websitesChecked, std::uint32_t& bankingSessions,
                       std::uint32_t& harmfulBlocks, std::uint32_t& wtsScans, std::uint32_t& wtsBlocks,
                       std::int32_t today) const;

    static constexpr std::uint32_t kAllDays = 0xFFFFFFFF;

    Property<bool> bankingProtectionEnabled{
        this, L"windows.browsing_protection.internal.statistics.banking_protection.enabled", false};
    Property<bool> browsingProtectionEnabled{
        this, L"windows.browsing_protection.internal.statistics.browsing_protection.enabled", false};
    Property<bool> webContentControlEnabled{
        this, L"windows.browsing_protection.internal.statistics.web_content_control.enabled", false};
    PropertySet<DailyCounter> dailyCounters{this, L"windows.browsing_protection.internal.statistics.daily_counters"};

private:
    mutable std::mutex m_statisticsMutex;
};

} // namespace Settings
