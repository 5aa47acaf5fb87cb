#include "platform/Clock.h"

#include <gtest/gtest.h>

#include <QByteArray>

#include <ctime>

namespace
{

/// The variable that names the zone to the C library, set for as long as this lives.
class ZoneVariable
{
public:
    explicit ZoneVariable(const char* zone) { qputenv("TZ", zone); }
    ~ZoneVariable() { m_before.isNull() ? qunsetenv("TZ") : qputenv("TZ", m_before); }

private:
    const QByteArray m_before = qgetenv("TZ");
};

TEST(Zone, EveryAnswerFollowsItsChange)
{
    Platform::Clock& clock = Platform::Get<Platform::Clock>();
    for (const auto& [zone, minutes] : {std::pair("VDN-5:45", 345), {"VDN3:30", -210}, {"VDN-11", 660}, {"VDN0", 0}})
    {
        const ZoneVariable variable(zone);
        int offset = 1;
        EXPECT_TRUE(clock.UtcOffset(offset));
        EXPECT_EQ(offset, minutes);
        Platform::CalendarTime noon{};
        EXPECT_EQ(clock.ToLocal(43'200, noon), 0U);
        EXPECT_EQ(noon.hour * 60 + noon.minute, 720 + minutes);
        std::time_t now;
        Platform::CalendarTime local;
        do
        {
            now = std::time(nullptr);
            local = clock.LocalTime();
        } while (std::time(nullptr) / 60 != now / 60);
        EXPECT_EQ((local.hour * 60 + local.minute) % 1440, (now / 60 + minutes) % 1440);
    }
}

} // namespace
