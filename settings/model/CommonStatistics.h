#pragma once

#include "settings/model/DailyCounter.h"
#include "settings/model/Group.h"

namespace Settings
{

/// Counts of protective work, a day at a time.
class CommonStatistics : public Group
{
public:
    explicit CommonStatistics(Model* parent) : Group(parent) {}

    /// Constrains the group's keys in the store. Each key that was not constrained yet counts as changed afterwards,
    /// so that the next save writes it beside its constraint.
    void ApplyConstraints(OrbStrataHandle handle) override;

    Property<bool> bankingProtectionEnabled{
        this, L"windows.browsing_protection.internal.statistics.banking_protection.enabled", false};
    Property<bool> browsingProtectionEnabled{
        this, L"windows.browsing_protection.internal.statistics.browsing_protection.enabled", false};
    Property<bool> webContentControlEnabled{
        this, L"windows.browsing_protection.internal.statistics.web_content_control.enabled", false};
    PropertySet<DailyCounter> dailyCounters{this, L"windows.browsing_protection.internal.statistics.daily_counters"};
};

} // namespace Settings
