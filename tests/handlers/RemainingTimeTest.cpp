#include "handlers/RemainingTime.h"
#include "handlers/TimeUtil.h"
#include "settings/model/VdnSettings.h"
#include "tests/support/FakeClock.h"
#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

#include <limits>

using StrataSettings::Seconds;
using StrataSettings::TimePoint;

namespace
{

enum Day : std::size_t
{
    Sunday,
    Monday,
    Tuesday,
    Wednesday,
    Thursday
};

constexpr std::optional<int> kUnlimited;

class RemainingTimeTest : public testing::Test
{
protected:
    RemainingTimeTest() { m_settings.time.quotas.enabled.Set(true); }

    void Allow(Day day, Seconds allowance) { m_settings.time.quotas.days[day].Duration.Set(allowance); }

    void UseDevice(Seconds used, const char* until)
    {
        m_device.duration.Set(used);
        m_device.lastUpdate.Set(At(until));
    }

    static TimePoint At(const char* utc) { return TimePoint(Seconds(FakeClock::Seconds(utc))); }

    std::optional<int> Left(const char* utc) const
    {
        return MinutesRemaining(m_settings.time, m_settings.internal, At(utc));
    }

    VdnSettings m_settings;
    Settings::TimeLimitTrackingData& m_device = m_settings.internal.deviceMode;
    Settings::TimeLimitTrackingData& m_browser = m_settings.internal.browserMode;
    FakeClock m_clock;
};

} // namespace

TEST_F(RemainingTimeTest, AStartedMinuteCounts)
{
    Allow(Tuesday, Seconds(3600));
    UseDevice(Seconds(3600 - 61), "2026-03-03T11:59:00");
    EXPECT_EQ(2, Left("2026-03-03T12:00:00"));
    UseDevice(Seconds(3600 - 60), "2026-03-03T11:59:00");
    EXPECT_EQ(1, Left("2026-03-03T12:00:00"));
    UseDevice(Seconds(5000), "2026-03-03T11:59:00");
    EXPECT_EQ(0, Left("2026-03-03T12:00:00"));
}

TEST_F(RemainingTimeTest, YesterdaysUseDoesNotCount)
{
    Allow(Tuesday, Seconds(3600));
    Allow(Wednesday, Seconds(1800));
    UseDevice(Seconds(3600), "2026-03-03T20:00:00");
    EXPECT_EQ(0, Left("2026-03-03T20:01:00"));
    EXPECT_EQ(30, Left("2026-03-04T00:00:30"));
    EXPECT_EQ(kUnlimited, Left("2026-03-02T12:00:00")); // the clock is set back, to a day without a limit
}

TEST_F(RemainingTimeTest, AsMuchAsTheDayHasIsUnlimited)
{
    Allow(Tuesday, Seconds(3600));
    EXPECT_EQ(60, Left("2026-03-03T22:59:59"));
    EXPECT_EQ(kUnlimited, Left("2026-03-03T23:00:00"));
    m_settings.time.quotas.enabled.Set(false);
    EXPECT_EQ(kUnlimited, Left("2026-03-03T12:00:00"));
}

TEST_F(RemainingTimeTest, AnExtensionLeavesAtLeastItsTime)
{
    Allow(Tuesday, Seconds(600));
    UseDevice(Seconds(600), "2026-03-03T11:00:00");
    m_device.extension.Set(At("2026-03-03T12:15:00"));
    EXPECT_EQ(10, Left("2026-03-03T12:00:00")); // the browser's own allowance is the smaller one
    m_browser.extension.Set(At("2026-03-03T12:30:00"));
    EXPECT_EQ(15, Left("2026-03-03T12:00:00"));
    EXPECT_EQ(1, Left("2026-03-03T12:14:30"));
    EXPECT_EQ(0, Left("2026-03-03T12:15:00"));
}

TEST_F(RemainingTimeTest, MalformedSettingsGiveNoMoreThanTheDay)
{
    constexpr auto kLeast = std::numeric_limits<std::int64_t>::min();
    constexpr auto kMost = std::numeric_limits<std::int64_t>::max();
    Allow(Tuesday, Seconds(3600));
    UseDevice(Seconds(kLeast), "2026-03-03T11:00:00");
    m_browser.extension.Set(TimePoint(StrataSettings::Ticks(kLeast)));
    EXPECT_EQ(60, Left("2026-03-03T12:00:00"));
    UseDevice(Seconds(kMost), "2026-03-03T11:00:00");
    for (const std::int64_t allowance : {kLeast, kMost})
    {
        Allow(Tuesday, Seconds(allowance));
        EXPECT_EQ(0, Left("2026-03-03T12:00:00"));
    }
    for (Settings::TimeLimitTrackingData* mode : {&m_device, &m_browser})
        mode->extension.Set(TimePoint(StrataSettings::Ticks(kMost)));
    EXPECT_EQ(kUnlimited, Left("2026-03-03T12:00:00"));
}

TEST_F(RemainingTimeTest, TheLocalDayDecidesInZonesAndOverDaylightSaving)
{
    for (const Day day : {Sunday, Monday})
        Allow(day, Seconds(day == Sunday ? 1200 : 3600));
    m_clock.SetOffset(60);
    m_clock.SetOffset(120, "2026-03-29T01:00:00"); // 29 March has 23 hours
    EXPECT_EQ(20, Left("2026-03-28T23:30:00"));    // Sunday, 00:30
    EXPECT_EQ(20, Left("2026-03-29T21:30:00"));    // Sunday, 23:30
    EXPECT_EQ(60, Left("2026-03-29T22:00:00"));    // Monday, 00:00

    m_clock.SetOffset(60, "2026-10-25T01:00:00"); // 25 October has 25 hours
    EXPECT_EQ(20, Left("2026-10-25T22:30:00"));   // Sunday, 23:30
    EXPECT_EQ(60, Left("2026-10-25T23:00:00"));   // Monday, 00:00

    m_clock.SetOffset(330, "2026-11-01T00:00:00");
    EXPECT_EQ(kUnlimited, Left("2026-11-07T18:29:00")); // Saturday, 23:59
    EXPECT_EQ(20, Left("2026-11-07T18:30:00"));         // Sunday, 00:00
}

TEST_F(RemainingTimeTest, ATimeThatCannotBeConvertedAllowsTheWholeDay)
{
    constexpr Seconds kWholeDay(86400);
    Allow(Tuesday, Seconds(60));
    Allow(Thursday, Seconds(60)); // 1 January 1970
    EXPECT_EQ(Seconds(60), TimeUtil::DayOfWeek(m_settings.time, At("2026-03-03T12:00:00")));
    EXPECT_EQ(kWholeDay, TimeUtil::DayOfWeek(m_settings.time, TimePoint()));
    m_clock.m_error = 22;
    LogCapture::Expect(2, "TimeUtil::DayOfWeek: localtime_s returned 22");
    EXPECT_EQ(kWholeDay, TimeUtil::DayOfWeek(m_settings.time, At("2026-03-03T12:00:00")));
}

TEST_F(RemainingTimeTest, MinutesUntilMidnightAreLocalOnesWithoutTheSeconds)
{
    const auto minutes = [](const char* utc) {
        return TimeUtil::MinutesUntilMidnight(std::chrono::system_clock::time_point(Seconds(FakeClock::Seconds(utc))));
    };
    EXPECT_EQ(1440, minutes("2024-03-05T00:00:59"));
    EXPECT_EQ(690, minutes("1969-12-31T12:30:00"));
    EXPECT_EQ(1, minutes("2024-03-05T23:59:59"));
    m_clock.SetOffset(-30);
    EXPECT_EQ(30, minutes("2024-03-05T00:00:00"));
    m_clock.m_error = 22;
    EXPECT_EQ(0, minutes("2024-03-05T12:30:00"));
    EXPECT_EQ((LogLine{3, "TimeUtil::MinutesUntilMidnight: Failed to convert time point to calendar time 22"}),
              LogCapture::Take(3).back());
}
