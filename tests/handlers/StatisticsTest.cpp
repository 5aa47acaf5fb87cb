#include "handlers/StatisticsHandler.h"
#include "tests/handlers/HandlerTest.h"
#include "tests/support/FakeClock.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr const wchar_t* kCounters = L"windows.browsing_protection.internal.statistics.daily_counters";
constexpr const char* kAll = "@Veridan\\Statistics:json";
constexpr const char* kYear = "@Veridan\\Statistics:json_365";
constexpr const char* kMonth = "@Veridan\\Statistics:json_30";
constexpr const char* kWeek = "@Veridan\\Statistics:json_7";
constexpr const char* kValueBar = "@Veridan\\Statistics:json_valuebar";

/// One day's counts, so many days before 5 March 2026.
std::string Day(int daysAgo, const char* counts)
{
    return R"({"julianDate":)" + std::to_string(QDate(2026, 3, 5).toJulianDay() - daysAgo) + "," + counts + "}";
}

constexpr const char* kNothing =
    R"("websitesChecked":0,"bankingSessions":0,"harmfulBlocks":0,"wtsScans":0,"wtsBlocks":0)";

class StatisticsTest : public HandlerTest
{
protected:
    void Start(const std::string& days)
    {
        Put(kUser, kCounters, Stored{ORB_STRATA_TYPE_OBJECT, 0, "[" + days + "]", 0});
        m_handler = std::make_unique<StatisticsHandler>(m_user);
        ASSERT_TRUE(m_handler->Initialize(&m_host));
        m_host.Forget();
    }

    /// A period's entries as "description=number type".
    std::vector<std::string> Entries(const char* id) const
    {
        std::vector<std::string> entries;
        for (const QJsonValue& value : QJsonDocument::fromJson(m_host.Value(id).toString().toUtf8()).array())
        {
            const QJsonObject entry = value.toObject();
            entries.push_back(entry.value("description").toString().toStdString() + "=" +
                              std::to_string(entry.value("number").toVariant().toLongLong()) + " " +
                              entry.value("type").toString().toStdString());
        }
        return entries;
    }

    void PassMinute() { Elapse(m_handler.get(), 60'000); }

    FakeClock m_clock;
    std::unique_ptr<StatisticsHandler> m_handler;
};

} // namespace

TEST_F(StatisticsTest, EachPeriodCountsItsDaysInTheCountersOrder)
{
    for (const char* name : {"downloads_scanned.plur", "downloads_blocked.sing", "web_sites_verified.plur",
                             "web_sites_blocked.plur", "banking_sessions_secured.sing"})
        m_host.PageSets((std::string("@Localization\\ValueBar\\CounterDescription:") + name).c_str(), name);
    Start(Day(0, R"("websitesChecked":5,"bankingSessions":1,"harmfulBlocks":2,"wtsScans":7,"wtsBlocks":1)") + "," +
          Day(6, R"("websitesChecked":10,"bankingSessions":0,"harmfulBlocks":0,"wtsScans":0,"wtsBlocks":0)") + "," +
          Day(7, R"("websitesChecked":100,"bankingSessions":0,"harmfulBlocks":0,"wtsScans":0,"wtsBlocks":0)") + "," +
          Day(364, R"("websitesChecked":1000,"bankingSessions":0,"harmfulBlocks":0,"wtsScans":0,"wtsBlocks":0)") + "," +
          Day(-1, R"("websitesChecked":50000,"bankingSessions":0,"harmfulBlocks":0,"wtsScans":0,"wtsBlocks":0)"));
    EXPECT_THAT(Entries(kWeek), ElementsAre("downloads_scanned.plur=7 checked", "downloads_blocked.sing=1 blocked",
                                            "web_sites_verified.plur=15 checked", "web_sites_blocked.plur=2 blocked",
                                            "banking_sessions_secured.sing=1 checked"));
    EXPECT_EQ("web_sites_verified.plur=115 checked", Entries(kMonth)[2]);
    EXPECT_EQ("web_sites_verified.plur=1115 checked", Entries(kYear)[2]);
    EXPECT_EQ("web_sites_verified.plur=51115 checked", Entries(kAll)[2]); // future days, too
    EXPECT_EQ(m_host.String(kAll), m_host.String(kValueBar));
}

TEST_F(StatisticsTest, WithoutCountsTheTextsAreEmptyAndTheValueBarIsNotSet)
{
    Start(Day(0, kNothing));
    m_handler->UpdateStatistics();
    EXPECT_THAT(m_host.Take("set"), ElementsAre("json", "json_365", "json_30", "json_7"));
    EXPECT_EQ("", m_host.String(kAll));
}

TEST_F(StatisticsTest, CountersThatCouldNotBeReadAreShownOnceTheyCan)
{
    Fail("OrbStrata_GetObject", kCounters, ORB_STRATA_STORE_FAILED, 1);
    Start(Day(0, R"("websitesChecked":2,"bankingSessions":0,"harmfulBlocks":0,"wtsScans":0,"wtsBlocks":0)"));
    EXPECT_EQ("", m_host.String(kWeek));
    EXPECT_TRUE(m_user->LoadMissing());
    Settle();
    EXPECT_THAT(Entries(kWeek), ElementsAre("=2 checked"));
    LogCapture::Take();
}

TEST_F(StatisticsTest, TheLocalisationsChangeRepublishes)
{
    Start(Day(0, R"("websitesChecked":1,"bankingSessions":0,"harmfulBlocks":0,"wtsScans":0,"wtsBlocks":0)"));
    m_host.PageSets("@Localization\\ValueBar\\CounterDescription:web_sites_verified.sing", "eine Seite");
    m_host.PageFires("@Localization\\MetaData\\Localization:updated");
    EXPECT_THAT(Entries(kWeek), ElementsAre("eine Seite=1 checked"));
}

TEST_F(StatisticsTest, AnotherDateRepublishesAndTheSameDoesNot)
{
    m_clock.Set("2026-03-05T23:58:30");
    Start(Day(0, R"("websitesChecked":2,"bankingSessions":0,"harmfulBlocks":0,"wtsScans":0,"wtsBlocks":0)"));
    m_clock.Advance(60);
    PassMinute();
    EXPECT_THAT(m_host.Take("set"), IsEmpty());
    m_clock.Advance(60);
    PassMinute();
    EXPECT_EQ(5u, m_host.Take("set").size());
    EXPECT_THAT(LogCapture::Take(5), Contains(LogLine{5, "StatisticsHandler::timerEvent: Date changed"}));
    EXPECT_THAT(Entries(kWeek), ElementsAre("=2 checked"));
    PassMinute();
    EXPECT_THAT(m_host.Take("set"), IsEmpty());
    m_clock.Advance(7 * 86400); // the clock is set forward
    PassMinute();
    EXPECT_EQ("", m_host.String(kWeek));
    EXPECT_THAT(Entries(kMonth), ElementsAre("=2 checked"));
}
