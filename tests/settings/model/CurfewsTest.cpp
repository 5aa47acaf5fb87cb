#include "settings/model/VdnSettings.h"
#include "tests/support/LogCapture.h"

#include <gmock/gmock.h>

using Settings::Curfew;
using StrataSettings::ModificationState;
using StrataSettings::Seconds;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr int kMonday = 1;
constexpr int kTuesday = 2;

class CurfewsTest : public testing::Test
{
protected:
    static Curfew Range(std::int64_t from, std::int64_t until)
    {
        Curfew range(0, 1);
        range.From = Seconds(from);
        range.Until = Seconds(until);
        return range;
    }

    std::string Block(std::size_t block) const { return m_curfews.ToLegacyUiString().substr(block * 24, 24); }

    VdnSettings m_tree;
    Settings::Curfews& m_curfews = m_tree.time.curfews;
};

} // namespace

TEST_F(CurfewsTest, EveryRuleThatARangeBreaksIsReportedAndTheRangeIsKept)
{
    struct Case
    {
        int from;
        int until;
        std::vector<std::string> broken;
    };
    const std::string from = "From >= std::chrono::hours(0)";
    const std::string until = "Until > std::chrono::hours(0)";
    const std::string day = "Until <= std::chrono::hours(24)";
    const Case cases[] = {{0, 1, {}},      {0, 24, {}},
                          {23, 1, {}},     {-1, 1, {from}},
                          {0, 0, {until}}, {-1, -1, {from, until}},
                          {25, 25, {day}}, {-600'000, 600'000, {from, day}}};
    for (const Case& one : cases)
    {
        const Curfew range(one.from, one.until);
        EXPECT_EQ(Seconds(std::int64_t{one.from} * 3600), range.From);
        EXPECT_EQ(Seconds(std::int64_t{one.until} * 3600), range.Until);
        std::vector<LogLine> expected;
        for (const std::string& rule : one.broken)
            expected.push_back({1, "Settings::Curfew::Curfew, assertion failed: " + rule});
        EXPECT_EQ(expected, LogCapture::Take()) << one.from << " - " << one.until;
    }
}

TEST_F(CurfewsTest, ADayHoldsEachRangeOnce)
{
    m_curfews.Add(kTuesday, Curfew(20, 24));
    m_curfews.Add(kTuesday, Curfew(0, 7));
    m_curfews.Add(kTuesday, Curfew(0, 6));
    EXPECT_THAT(LogCapture::Take(), IsEmpty());
    m_curfews.Add(kTuesday, Curfew(20, 24));
    EXPECT_THAT(m_curfews.days[kTuesday].Get(), ElementsAre(Curfew(0, 6), Curfew(0, 7), Curfew(20, 24)));
    EXPECT_EQ(ModificationState::Changed, m_curfews.days[kTuesday].State());
    EXPECT_EQ(ModificationState::Default, m_curfews.days[kMonday].State());
    EXPECT_THAT(LogCapture::Take(),
                ElementsAre(LogLine{3, "Settings::Curfews::Add: Failed to emplace '2 / 72000 -> 86400' "}));
}

TEST_F(CurfewsTest, ARefusedRangeIsNoChange)
{
    const std::set<Curfew> stored{Curfew(20, 24)};
    m_curfews.days[kTuesday].Update(&stored);
    const std::uint32_t enforced = ORB_STRATA_CONSTRAINT_ENFORCED;
    m_curfews.days[kMonday].UpdateConstraints(&enforced);

    m_curfews.Add(kTuesday, Curfew(20, 24));
    m_curfews.Add(kMonday, Curfew(0, 24));
    m_curfews.Add(-1, Curfew(0, 24));
    m_curfews.Add(7, Curfew(0, 24));
    EXPECT_EQ(ModificationState::InStep, m_curfews.days[kTuesday].State());
    EXPECT_THAT(m_curfews.days[kMonday].Get(), IsEmpty());
    const std::string failed = "Settings::Curfews::Add: Failed to emplace '";
    EXPECT_THAT(LogCapture::Take(),
                ElementsAre(LogLine{3, failed + "2 / 72000 -> 86400' "}, LogLine{3, failed + "1 / 0 -> 86400' "},
                            LogLine{3, failed + "4294967295 / 0 -> 86400' "}, LogLine{3, failed + "7 / 0 -> 86400' "}));
}

TEST_F(CurfewsTest, TheWeekBeginsOnMondayAndEndsOnSunday)
{
    const std::string allowed(24, '1');
    EXPECT_EQ(std::string(168, '1'), m_curfews.ToLegacyUiString());
    m_curfews.Add(kMonday, Curfew(22, 24));
    m_curfews.Add(kTuesday, Curfew(0, 7));
    m_curfews.Add(0, Curfew(12, 13));
    EXPECT_EQ("1111111111111111111111"
              "00"
              "0000000"
              "11111111111111111" +
                  allowed + allowed + allowed + allowed +
                  "111111111111"
                  "0"
                  "11111111111",
              m_curfews.ToLegacyUiString());
}

TEST_F(CurfewsTest, AWeeksTextBecomesItsLongestRangesAndComesBack)
{
    const std::string allowed(24, '1');
    const std::string week = "000000011111111111111100" + std::string(24, '0') + allowed + allowed + allowed +
                             "111111111111011111111111" + allowed;
    m_curfews.Add(kTuesday, Curfew(3, 5));
    ASSERT_TRUE(m_curfews.FromLegacyUiString(week));
    EXPECT_EQ(week, m_curfews.ToLegacyUiString());
    EXPECT_THAT(m_curfews.days[kMonday].Get(), ElementsAre(Curfew(0, 7), Curfew(22, 24)));
    EXPECT_THAT(m_curfews.days[kTuesday].Get(), ElementsAre(Curfew(0, 24)));
    EXPECT_THAT(m_curfews.days[6].Get(), ElementsAre(Curfew(12, 13)));
    EXPECT_EQ(ModificationState::Default, m_curfews.days[0].State()); // only days that change count as changed
    ASSERT_TRUE(m_curfews.FromLegacyUiString(std::string(168, '1')));
    for (const auto& day : m_curfews.days)
        EXPECT_THAT(day.Get(), IsEmpty());
}

TEST_F(CurfewsTest, AnyOtherTextIsRefusedAndChangesNothing)
{
    m_curfews.Add(kMonday, Curfew(8, 9));
    const std::string before = m_curfews.ToLegacyUiString();
    const std::string week(168, '0');
    for (const std::string& text : {std::string(), std::string(24, '0'), week.substr(1), week + '0', week + week,
                                    week.substr(1) + '2', '/' + week.substr(1), week.substr(1) + '\0'})
    {
        EXPECT_FALSE(m_curfews.FromLegacyUiString(text)) << text;
        EXPECT_EQ(before, m_curfews.ToLegacyUiString()) << text;
    }
}

TEST_F(CurfewsTest, EndsOffTheHourAreCutDown)
{
    m_curfews.Add(kMonday, Range(-3599, 3599));
    EXPECT_EQ(std::string(24, '1'), Block(0));
    m_curfews.Add(kMonday, Range(2 * 3600 + 3599, 4 * 3600 + 3599));
    EXPECT_EQ("110011111111111111111111", Block(0));
    m_curfews.Add(kMonday, Range(23 * 3600, 24 * 3600 + 3599));
    EXPECT_EQ("110011111111111111111110", Block(0));
}

TEST_F(CurfewsTest, ARangeThatEndsBeforeItBeginsForbidsNothing)
{
    for (const auto& [from, until] :
         std::vector<std::pair<std::int64_t, std::int64_t>>{{5, 5}, {23, 1}, {24, 24}, {1'000'000'000'000, 24}})
        m_curfews.Add(kMonday, Range(from * 3600, until * 3600));
    EXPECT_EQ(std::string(24, '1'), Block(0));
    EXPECT_THAT(LogCapture::Take(), IsEmpty());
}

TEST_F(CurfewsTest, AFaultyRangeIsReportedAndSkipped)
{
    m_curfews.Add(kMonday, Range(-3600, 7200));
    m_curfews.Add(kMonday, Range(0, -3600));
    m_curfews.Add(kMonday, Range(3600, 90'000));
    m_curfews.Add(kMonday, Range(7200, std::int64_t{4'294'967'306} * 3600));
    m_curfews.Add(kMonday, Range(18'000, 21'600));
    EXPECT_EQ("111110111111111111111111", Block(0));
    const std::string faulty = "Settings::Curfews::ToLegacyUiString: Faulty range: ";
    EXPECT_THAT(LogCapture::Take(), ElementsAre(LogLine{2, faulty + "-1/2"}, LogLine{2, faulty + "0/-1"},
                                                LogLine{2, faulty + "1/25"}, LogLine{2, faulty + "2/10"}));
}

TEST(QuotaTest, AnyDurationIsKeptAndABrokenRuleIsReported)
{
    const auto build = [](Seconds duration) { return Settings::Quota(nullptr, L"monday", duration).Duration.Get(); };
    EXPECT_EQ(Seconds(0), build(Seconds(0)));
    EXPECT_EQ(Seconds(86'400), build(Seconds(86'400)));
    EXPECT_THAT(LogCapture::Take(), IsEmpty());

    EXPECT_EQ(Seconds(-1), build(Seconds(-1)));
    EXPECT_EQ(Seconds(86'401), build(Seconds(86'401)));
    const std::string failed = "Settings::Quota::Quota, assertion failed: ";
    EXPECT_THAT(LogCapture::Take(), ElementsAre(LogLine{1, failed + "*Duration >= std::chrono::hours(0)"},
                                                LogLine{1, failed + "*Duration <= std::chrono::hours(24)"}));
}
