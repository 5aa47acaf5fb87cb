#include "settings/model/VdnSettings.h"
#include "tests/support/LogCapture.h"

#include <gmock/gmock.h>

#include <random>

using Settings::Curfew;
using StrataSettings::ModificationState;
using StrataSettings::Seconds;
using testing::IsEmpty;

namespace
{

constexpr int kWeeks = 3000;
constexpr std::size_t kHours = 168;

class WeekTextTest : public testing::Test
{
protected:
    int Random(int low, int high) { return std::uniform_int_distribution(low, high)(m_random); }

    std::string RandomText()
    {
        std::string text(kHours, '1');
        for (std::size_t at = 0; at < kHours;) // runs of every length, across the ends of days, too
        {
            const char hour = Random(0, 1) ? '1' : '0';
            for (int length = Random(1, Random(1, 60)); length > 0 && at < kHours; --length)
                text[at++] = hour;
        }
        return text;
    }

    /// Unordered ranges that may overlap, touch each other or midnight, and begin and end off the hour.
    std::vector<Curfew> RandomDay()
    {
        std::vector<Curfew> ranges;
        for (int count = Random(0, 5); count > 0; --count)
        {
            Curfew range(0, 1);
            const int step = Random(0, 2) ? 3600 : 1;
            range.From = Seconds(Random(0, 86'399) / step * step);
            range.Until = Seconds(Random(1, 86'400 / step) * step);
            if (!ranges.empty() && Random(0, 3) == 0)
                range.From = ranges.back().Until;
            ranges.push_back(range);
        }
        return ranges;
    }

    static bool Forbids(const std::vector<Curfew>& ranges, std::int64_t hour)
    {
        for (const Curfew& range : ranges)
            if (range.From < Seconds((hour + 1) * 3600) && range.Until >= Seconds((hour + 1) * 3600))
                return true;
        return false;
    }

    void ExpectLongestRuns(const Settings::Curfews& curfews)
    {
        for (const auto& day : curfews.days)
        {
            Seconds end(-1);
            for (const Curfew& range : day.Get())
            {
                EXPECT_GT(range.From, end);
                EXPECT_GT(range.Until, range.From);
                end = range.Until;
            }
        }
    }

    std::mt19937 m_random{20'240'305};
    VdnSettings m_tree;
    Settings::Curfews& m_curfews = m_tree.time.curfews;
};

} // namespace

TEST_F(WeekTextTest, AnyWeekComesBackWithTheSameHours)
{
    for (int week = 0; week < kWeeks; ++week)
    {
        std::string expected;
        std::array<std::set<Curfew>, 7> sets;
        for (const std::size_t day : {1u, 2u, 3u, 4u, 5u, 6u, 0u})
        {
            const std::vector<Curfew> ranges = RandomDay();
            sets[day] = std::set<Curfew>(ranges.begin(), ranges.end());
            for (int hour = 0; hour < 24; ++hour)
                expected += Forbids(ranges, hour) ? '0' : '1';
        }
        for (std::size_t day = 0; day < sets.size(); ++day)
            m_curfews.days[day].Set(sets[day]);

        ASSERT_EQ(expected, m_curfews.ToLegacyUiString());
        ASSERT_TRUE(m_curfews.FromLegacyUiString(expected));
        ASSERT_EQ(expected, m_curfews.ToLegacyUiString());
        ExpectLongestRuns(m_curfews);
    }
    EXPECT_THAT(LogCapture::Take(), IsEmpty());
}

TEST_F(WeekTextTest, AnyTextComesBackTheSame)
{
    for (int week = 0; week < kWeeks; ++week)
    {
        const std::string text = RandomText();
        ASSERT_TRUE(m_curfews.FromLegacyUiString(text));
        ASSERT_EQ(text, m_curfews.ToLegacyUiString());
        ExpectLongestRuns(m_curfews);
    }
    ASSERT_TRUE(m_curfews.FromLegacyUiString(std::string(kHours, '1')));
    for (const auto& day : m_curfews.days)
        EXPECT_THAT(day.Get(), IsEmpty());
    EXPECT_THAT(LogCapture::Take(), IsEmpty());
}

TEST_F(WeekTextTest, AnyOtherTextIsRefusedAndChangesNothing)
{
    const std::string before = RandomText();
    ASSERT_TRUE(m_curfews.FromLegacyUiString(before));
    for (auto& day : m_curfews.days)
    {
        const std::set<Curfew> stored = day.Get();
        day.Update(&stored);
    }
    const auto expectRefused = [&](const std::string& text) {
        EXPECT_FALSE(m_curfews.FromLegacyUiString(text)) << text;
        EXPECT_EQ(before, m_curfews.ToLegacyUiString()) << text;
    };
    for (const std::size_t length : {0u, 1u, 24u, 167u, 169u, 336u})
        expectRefused(std::string(length, '0'));
    expectRefused(std::string(kHours, '0') + '\n');
    expectRefused(std::string(kHours, '0') + '\0');
    for (int other = 0; other < 256; ++other)
    {
        std::string text(kHours, '0');
        text[static_cast<std::size_t>(Random(0, kHours - 1))] = static_cast<char>(other);
        if (other != '0' && other != '1')
            expectRefused(text);
    }
    for (const auto& day : m_curfews.days)
        EXPECT_EQ(ModificationState::InStep, day.State());
}

TEST_F(WeekTextTest, OnlyDaysThatChangeCountAsChanged)
{
    const std::string weekend = std::string(120, '1') + std::string(48, '0');
    ASSERT_TRUE(m_curfews.FromLegacyUiString(weekend));
    for (std::size_t day = 0; day < m_curfews.days.size(); ++day)
        EXPECT_EQ(day == 0 || day == 6 ? ModificationState::Changed : ModificationState::Default,
                  m_curfews.days[day].State());
}

TEST_F(WeekTextTest, EnforcedDaysStayWhileTheOthersChange)
{
    for (int week = 0; week < 200; ++week)
    {
        const std::uint32_t free = 0;
        const std::uint32_t enforced = ORB_STRATA_CONSTRAINT_ENFORCED;
        for (auto& day : m_curfews.days)
            day.UpdateConstraints(&free);
        const std::string before = RandomText();
        const std::string after = RandomText();
        ASSERT_TRUE(m_curfews.FromLegacyUiString(before));
        LogCapture::Take();

        std::string expected = after;
        std::size_t refused = 0;
        for (std::size_t block = 0; block < 7; ++block)
            if (Random(0, 1))
            {
                m_curfews.days[(block + 1) % 7].UpdateConstraints(&enforced);
                expected.replace(block * 24, 24, before, block * 24, 24);
                for (std::size_t hour = block * 24; hour < block * 24 + 24; ++hour)
                    refused += after[hour] == '0' && (hour % 24 == 0 || after[hour - 1] == '1');
            }
        ASSERT_TRUE(m_curfews.FromLegacyUiString(after));
        ASSERT_EQ(expected, m_curfews.ToLegacyUiString());
        const std::vector<LogLine> lines = LogCapture::Take();
        EXPECT_EQ(refused, lines.size());
        for (const LogLine& line : lines)
            EXPECT_EQ(0u, line.text.find("Settings::Curfews::Add: Failed to emplace '")) << line;
    }
}
