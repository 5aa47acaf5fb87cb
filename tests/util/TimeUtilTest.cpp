#include "util/TimeUtil.h"

#include "tests/support/LogCapture.h"
#include "tests/support/PlatformFakes.h"

#include <gmock/gmock.h>

namespace
{

class MinutesUntilMidnight : public testing::Test
{
protected:
    int At(int hour, int minute, int second)
    {
        m_clock.local = {2024, 3, 5, hour, minute, second, 0};
        return TimeUtil::MinutesUntilMidnight(std::chrono::system_clock::now());
    }

    FakeClock m_clock;
};

TEST_F(MinutesUntilMidnight, CountsTheMinutesAndNotTheSeconds)
{
    EXPECT_EQ(At(0, 0, 0), 1440);
    EXPECT_EQ(At(0, 0, 59), 1440);
    EXPECT_EQ(At(12, 30, 0), 690);
    EXPECT_EQ(At(23, 59, 59), 1);
}

TEST_F(MinutesUntilMidnight, IsNoneWhenTheSystemDoesNotKnowTheTime)
{
    m_clock.localError = 22;
    EXPECT_EQ(At(12, 30, 0), 0);
    EXPECT_THAT(LogCapture::Take(3),
                testing::ElementsAre(LogLine{3, "TimeUtil::MinutesUntilMidnight: Failed to convert time point to "
                                                "calendar time 22"}));
}

} // namespace
