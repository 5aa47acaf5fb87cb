#include "platform/Clock.h"

#include <gtest/gtest.h>

#include <QByteArray>

#include <cstdint>
#include <ctime>
#include <limits>

namespace
{

using Platform::CalendarTime;

/// The variable that names the zone to the C library, set for as long as this lives.
class ZoneVariable
{
public:
    explicit ZoneVariable(const char* zone) { qputenv("TZ", zone); }
    ~ZoneVariable()
    {
        if (m_before.isNull())
            qunsetenv("TZ");
        else
            qputenv("TZ", m_before);
    }

private:
    const QByteArray m_before = qgetenv("TZ");
};

int MinuteOfDay(const CalendarTime& time)
{
    return time.hour * 60 + time.minute;
}

void ExpectOneZone(Platform::Clock& clock)
{
    constexpr int kDay = 24 * 60;
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

TEST(Clock, EveryAnswerFollowsAChangeOfZone)
{
    Platform::Clock& clock = Platform::Get<Platform::Clock>();
    for (const char* const zone : {"VDN-5:45", "VDN3:30", "VDN-11", "VDN0"})
    {
        const ZoneVariable variable(zone);
        SCOPED_TRACE(zone);
        ExpectOneZone(clock);
    }
}

TEST(Clock, ATimeThatTheCalendarDoesNotHaveIsAnError)
{
    CalendarTime local{1, 2, 3, 4, 5, 6, 7};
    EXPECT_NE(Platform::Get<Platform::Clock>().ToLocal(std::numeric_limits<std::int64_t>::max(), local), 0U);
    EXPECT_EQ(local.year, 1);
}

} // namespace
