#include "platform/Clock.h"

#include <gtest/gtest.h>

#include <QDate>

#include <cstdint>
#include <ctime>
#include <limits>
#include <utility>

namespace
{

using Platform::CalendarTime;

int MinuteOfDay(const CalendarTime& time)
{
    return time.hour * 60 + time.minute;
}

TEST(Clock, EveryAnswerIsOfOneZone)
{
    constexpr int kDay = 24 * 60;
    Platform::Clock& clock = Platform::Get<Platform::Clock>();
    std::time_t now;
    CalendarTime converted{};
    CalendarTime local;
    CalendarTime utc;
    do
    {
        now = std::time(nullptr);
        ASSERT_EQ(clock.ToLocal(now, converted), 0U);
        local = clock.LocalTime();
        utc = clock.UtcTime();
    } while (std::time(nullptr) / 60 != now / 60);
    int offset = 0;
    ASSERT_TRUE(clock.UtcOffset(offset));
    EXPECT_EQ(MinuteOfDay(converted), MinuteOfDay(local));
    EXPECT_EQ(MinuteOfDay(local), (MinuteOfDay(utc) + offset + kDay) % kDay);
}

TEST(Clock, TheCalendarHasItsLeapYearsOnBothSidesOf1970)
{
    const std::pair<std::int64_t, QDate> noons[] = {{-2'203'848'000, {1900, 3, 1}}, {-43'200, {1969, 12, 31}},
                                                    {951'825'600, {2000, 2, 29}},   {4'107'499'200, {2100, 2, 28}},
                                                    {4'107'585'600, {2100, 3, 1}},  {13'574'606'400, {2400, 2, 29}}};
    for (const auto& [noon, date] : noons) // of UTC: the same day in nearly all zones
    {
        CalendarTime local{};
        ASSERT_EQ(Platform::Get<Platform::Clock>().ToLocal(noon, local), 0U);
        EXPECT_EQ(QDate(local.year, local.month, local.day), date) << noon;
    }
}

TEST(Clock, ATimeThatTheCalendarDoesNotHaveIsAnError)
{
    CalendarTime local{1, 2, 3, 4, 5, 6, 7};
    EXPECT_NE(Platform::Get<Platform::Clock>().ToLocal(std::numeric_limits<std::int64_t>::max(), local), 0U);
    EXPECT_EQ(local.year, 1);
}

} // namespace
