#include "handlers/TimeUtil.h"

#include "tests/support/FakeClock.h"
#include "tests/support/LogCapture.h"

#include <gmock/gmock.h>

namespace
{

class MinutesUntilMidnight : public testing::Test
{
protected:
    int At(const char* utc)
    {
        const std::chrono::seconds seconds(FakeClock::Seconds(utc));
        return TimeUtil::MinutesUntilMidnight(std::chrono::system_clock::time_point(seconds));
    }

    FakeClock m_clock;
    Platform::ServiceReplacement<Platform::Clock> m_clockReplacement{m_clock};
};

TEST_F(MinutesUntilMidnight, CountsTheLocalMinutesAndNotTheSeconds)
{
    EXPECT_EQ(At("2024-03-05T00:00:00"), 1440);
    EXPECT_EQ(At("2024-03-05T00:00:59"), 1440);
    EXPECT_EQ(At("1969-12-31T12:30:00"), 690);
    EXPECT_EQ(At("2024-03-05T23:59:59"), 1);
    m_clock.SetOffset(-30);
    EXPECT_EQ(At("2024-03-05T00:00:00"), 30);
}

TEST_F(MinutesUntilMidnight, IsNoneWhenTheSystemDoesNotKnowTheTime)
{
    m_clock.m_error = 22;
    EXPECT_EQ(At("2024-03-05T12:30:00"), 0);
    EXPECT_THAT(LogCapture::Take(3),
                testing::ElementsAre(LogLine{3, "TimeUtil::MinutesUntilMidnight: Failed to convert time point to "
                                                "calendar time 22"}));
}

} // namespace
