#include "settings/binding/ScopedSettings.h"
#include "settings/model/VdnSettings.h"
#include "tests/support/LogCapture.h"
#include "tests/support/StoreTest.h"

#include <limits>
#include <thread>

using Settings::CommonStatistics;
using Settings::DailyCounter;
using StrataSettings::ModificationState;
using testing::Contains;
using testing::ElementsAre;

namespace
{

struct Totals
{
    std::uint32_t websitesChecked = 0;
    std::uint32_t bankingSessions = 0;
    std::uint32_t harmfulBlocks = 0;
    std::uint32_t wtsScans = 0;
    std::uint32_t wtsBlocks = 0;

    void Add(const CommonStatistics& statistics, std::uint32_t range, std::int32_t today)
    {
        statistics.GetStatistics(range, websitesChecked, bankingSessions, harmfulBlocks, wtsScans, wtsBlocks, today);
    }

    std::array<std::uint32_t, 5> All() const
    {
        return {websitesChecked, bankingSessions, harmfulBlocks, wtsScans, wtsBlocks};
    }
};

DailyCounter Day(std::int64_t julianDate, std::array<std::int64_t, 5> counts)
{
    DailyCounter day(julianDate);
    day.websitesChecked = counts[0];
    day.bankingSessions = counts[1];
    day.harmfulBlocks = counts[2];
    day.wtsScans = counts[3];
    day.wtsBlocks = counts[4];
    return day;
}

class StatisticsTest : public StoreTest
{
protected:
    /// Which of the days a range selects, by their places.
    std::vector<std::size_t> Selected(const std::vector<std::int64_t>& days, std::uint32_t range, std::int32_t today)
    {
        std::set<DailyCounter> counters;
        for (std::size_t i = 0; i < days.size(); ++i)
            counters.insert(Day(days[i], {std::int64_t{1} << i, 0, 0, 0, 0}));
        m_statistics.dailyCounters.Set(counters);
        Totals totals;
        totals.Add(m_statistics, range, today);
        std::vector<std::size_t> places;
        for (std::size_t i = 0; i < days.size(); ++i)
            if (totals.websitesChecked & (1u << i))
                places.push_back(i);
        return places;
    }

    VdnSettings m_tree;
    CommonStatistics& m_statistics = m_tree.internal.statistics;
};

} // namespace

TEST_F(StatisticsTest, ARangeSelectsTheLastDaysUpToToday)
{
    using Places = std::vector<std::size_t>;
    constexpr std::int32_t kToday = 2'460'000;
    constexpr std::int64_t kHuge = std::numeric_limits<std::int64_t>::max();
    const std::vector<std::int64_t> days = {
        -kHuge - 1, -1, 0, kToday - 7, kToday - 6, kToday - 1, kToday, kToday + 1, kToday + (std::int64_t{1} << 32),
        kHuge};
    EXPECT_EQ(Places(), Selected(days, 0, kToday));
    EXPECT_EQ(Places({6}), Selected(days, 1, kToday));
    EXPECT_EQ(Places({5, 6}), Selected(days, 2, kToday));
    EXPECT_EQ(Places({4, 5, 6}), Selected(days, 7, kToday));
    EXPECT_EQ(Places({3, 4, 5, 6}), Selected(days, 8, kToday));
    EXPECT_EQ(Places({3, 4, 5, 6}), Selected(days, kToday, kToday));
    EXPECT_EQ(Places({0, 1, 2, 3, 4, 5, 6, 7, 8, 9}), Selected(days, CommonStatistics::kAllDays, kToday));
}

TEST_F(StatisticsTest, ARangeThatReachesBelowDayZeroSelectsNothing)
{
    using Places = std::vector<std::size_t>;
    const std::vector<std::int64_t> days = {-5, -4, 0, 4, 5, 6, 0xFFFF'FFFF};
    EXPECT_EQ(Places({3, 4}), Selected(days, 5, 5));
    EXPECT_EQ(Places(), Selected(days, 6, 5));
    EXPECT_EQ(Places(), Selected(days, CommonStatistics::kAllDays - 1, 5));
    EXPECT_EQ(Places(), Selected(days, 1, 0));
    EXPECT_EQ(Places(), Selected(days, 2, -4));
    EXPECT_EQ(Places({0, 1, 2, 3, 4, 5, 6}), Selected(days, CommonStatistics::kAllDays, -4));
}

TEST_F(StatisticsTest, TotalsAreAddedToAndWrapAt32Bits)
{
    m_statistics.dailyCounters.Set(
        {Day(10, {1, 0x1'0000'0005, -1, 0x7FFF'FFFF'FFFF'FFFF, 0}), Day(11, {2, 0xFFFF'FFFF, -2, 3, 0x8000'0000})});
    Totals totals{100, 1, 10, 0, 0x8000'0001};
    totals.Add(m_statistics, 2, 11);
    EXPECT_EQ((std::array<std::uint32_t, 5>{103, 5, 7, 2, 1}), totals.All());
}

TEST_F(StatisticsTest, TheCallIsTracedWithTheStoredDaysAndTheScans)
{
    m_statistics.dailyCounters.Set({Day(10, {0, 0, 0, 7, 0}), Day(11, {0, 0, 0, 9, 0}), Day(12, {})});
    Totals totals;
    totals.wtsScans = 0xFFFF'FFFF;
    totals.Add(m_statistics, 1, 11);
    Totals().Add(m_statistics, CommonStatistics::kAllDays, -1);
    const std::string name = "Settings::CommonStatistics::GetStatistics: ";
    EXPECT_THAT(LogCapture::Take(), ElementsAre(LogLine{5, name + "range=1, julian=11, dailies size=3, wtsScans=8"},
                                                LogLine{5, name + "range=-1, julian=-1, dailies size=3, wtsScans=16"}));
}

TEST_F(StatisticsTest, ThreadsThatAskAtOnceShareTheTotals)
{
    LogCapture::SetThreshold(4);
    std::set<DailyCounter> year;
    for (int day = 1; day <= 366; ++day)
        year.insert(Day(day, {1, 2, 3, 4, 5}));
    m_statistics.dailyCounters.Set(year);
    constexpr std::uint32_t kCalls = 2000;
    Totals totals;
    const auto ask = [&] {
        for (std::uint32_t i = 0; i < kCalls; ++i)
            totals.Add(m_statistics, 366, 366);
    };
    std::thread first(ask);
    std::thread second(ask);
    for (std::uint32_t i = 0; i < kCalls; ++i)
        m_statistics.dailyCounters.Update(&year);
    first.join();
    second.join();
    constexpr std::uint32_t kDays = 2 * kCalls * 366;
    EXPECT_EQ((std::array<std::uint32_t, 5>{kDays, 2 * kDays, 3 * kDays, 4 * kDays, 5 * kDays}), totals.All());
}

TEST_F(StatisticsTest, ConstraintsGoToEveryKeyThatIsNeitherEnforcedNorChanged)
{
    const std::uint32_t enforced = ORB_STRATA_CONSTRAINT_ENFORCED;
    static std::vector<std::pair<std::wstring, std::uint32_t>> s_calls;
    s_calls.clear();
    SuiteTableGuard guard(g_orbStrata);
    guard->OrbStrata_SetConstraints = [](OrbStrataHandle, const wchar_t* key, std::uint32_t constraints) {
        s_calls.emplace_back(key, constraints);
        return s_calls.size() == 2 ? OrbStrataResult{ORB_STRATA_ACCESS_DENIED} : OrbStrataResult{ORB_STRATA_SUCCESS};
    };
    const auto keys = [&] {
        const std::wstring base = L"windows.browsing_protection.internal.statistics.";
        std::vector<std::wstring> names;
        for (const auto& [key, constraints] : s_calls)
        {
            EXPECT_EQ(2u, constraints);
            names.push_back(key.substr(base.size()));
        }
        return names;
    };
    m_tree.ApplyConstraints(nullptr);
    EXPECT_THAT(keys(), ElementsAre(L"banking_protection.enabled", L"browsing_protection.enabled",
                                    L"web_content_control.enabled", L"daily_counters"));
    EXPECT_EQ(ModificationState::Default, m_statistics.browsingProtectionEnabled.State());
    EXPECT_EQ(ModificationState::Changed, m_statistics.dailyCounters.State());

    const bool value = true;
    m_statistics.bankingProtectionEnabled.Update(&value);
    m_statistics.bankingProtectionEnabled.UpdateConstraints(&enforced);
    s_calls.clear();
    m_tree.ApplyConstraints(nullptr);
    EXPECT_THAT(keys(), ElementsAre(L"browsing_protection.enabled"));
    EXPECT_EQ(ModificationState::InStep, m_statistics.bankingProtectionEnabled.State());
    EXPECT_EQ(ModificationState::Changed, m_statistics.browsingProtectionEnabled.State());
}
