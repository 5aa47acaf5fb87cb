#include "handlers/TimeLimitHandler.h"
#include "tests/handlers/HandlerTest.h"

#include <limits>

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr const char* kTimeSlots = "@TimeLimit\\Data:time_slots";
constexpr const char* kHours = "@TimeLimit\\Data:weekday_hours_value";
constexpr const wchar_t* kTuesdayQuota = L"common.time.quota.tuesday.duration";
constexpr const wchar_t* kMondayCurfew = L"common.time.curfew.monday.ranges";

std::string Week(char filled = '1')
{
    return std::string(168, filled);
}

class TimeLimitTest : public HandlerTest
{
protected:
    void Start()
    {
        Seed();
        StartMainGui();
        m_handler = std::make_unique<TimeLimitHandler>(m_user, m_mainGui);
        ASSERT_TRUE(m_handler->Initialize(&m_host));
        m_host.Forget();
    }

    void Save(const std::string& slots, const QVariant& hours)
    {
        m_host.PageSets(kTimeSlots, QString::fromStdString(slots));
        m_host.PageSets(kHours, hours);
        m_host.PageFires(kSave);
    }

    std::unique_ptr<TimeLimitHandler> m_handler;
};

} // namespace

TEST_F(TimeLimitTest, PublishesTheWeekAndTuesdaysLimit)
{
    Start();
    struct Row
    {
        std::int64_t seconds;
        int hours;
    };
    for (const Row& row :
         {Row{86400, 8}, Row{28800, 8}, Row{28799, 7}, Row{5400, 1}, Row{0, 0},
          Row{std::numeric_limits<std::int64_t>::min(), 0}, Row{std::numeric_limits<std::int64_t>::max(), 8}})
    {
        Put(kUser, kTuesdayQuota, Stored{ORB_STRATA_TYPE_INT64, row.seconds, {}, 0});
        Settle();
        m_host.PageFires(kLoadData);
        EXPECT_EQ(QVariant(row.hours), m_host.Value(kHours));
    }
    EXPECT_EQ(Week(), m_host.Text(kTimeSlots));
}

TEST_F(TimeLimitTest, SavesTheLimitForEveryDayWithTheCutAtEightHours)
{
    Start();
    OpenSettings();
    struct Row
    {
        int hours;
        std::int64_t seconds;
    };
    for (const Row& row : {Row{7, 25200}, Row{8, 86400}, Row{12, 86400}, Row{0, 0}, Row{2'000'000'000, 86400}})
    {
        Save(Week(), row.hours);
        for (const wchar_t* day : Settings::kDayNames)
            EXPECT_EQ(row.seconds,
                      Find(kUser, (std::wstring(L"common.time.quota.") + day + L".duration").c_str()).number);
    }
}

TEST_F(TimeLimitTest, SavesExactlyWhatChanged)
{
    Start();
    OpenSettings();
    Save(Week(), 8);
    EXPECT_THAT(WrittenKeys(), IsEmpty());
    std::string slots = Week();
    slots.replace(22, 2, "00");
    Save(slots, 8);
    EXPECT_THAT(WrittenKeys(), ElementsAre(kMondayCurfew));
    EXPECT_EQ(R"([{"from":79200,"until":86400}])", Find(kUser, kMondayCurfew).text);
    m_host.PageFires(kLoadData);
    Settle();
    m_host.PageFires(kLoadData);
    EXPECT_EQ(slots, m_host.Text(kTimeSlots));
}

TEST_F(TimeLimitTest, WhatThePageWasGivenIsNoChoice)
{
    Start();
    const wchar_t* const tuesdayCurfew = L"common.time.curfew.tuesday.ranges";
    const std::string evening = R"([{"from":77400,"until":86400}])";
    Put(kUser, kTuesdayQuota, Stored{ORB_STRATA_TYPE_INT64, 5400, {}, 0});
    Put(kUser, tuesdayCurfew, Stored{ORB_STRATA_TYPE_OBJECT, 0, evening, 0});
    Settle();
    OpenSettings();
    Put(kUser, L"common.time.quota.monday.duration", Stored{ORB_STRATA_TYPE_INT64, 7200, {}, 0}); // meanwhile
    Settle();
    m_host.PageFires(kSave);
    EXPECT_THAT(WrittenKeys(), IsEmpty());

    std::string slots = m_host.Text(kTimeSlots);
    slots[0] = '0'; // on Monday
    Save(slots, 1);
    EXPECT_THAT(WrittenKeys(), ElementsAre(kMondayCurfew));
    Save(slots, 3);
    EXPECT_EQ(7u, WrittenKeys().size());
    Save(slots, 1); // the first choice taken back
    EXPECT_EQ(3600, Find(kUser, kTuesdayQuota).number);
    EXPECT_EQ(evening, Find(kUser, tuesdayCurfew).text);
}

TEST_F(TimeLimitTest, BadInputSavesNothingOfThePage)
{
    Start();
    OpenSettings();
    for (const std::size_t length : {0u, 167u, 169u})
    {
        const std::string slots(length, '0');
        LogCapture::Take();
        Save(slots, 3);
        EXPECT_THAT(LogCapture::Take(4),
                    ElementsAre(LogLine{3, "TimeLimitHandler::Save: incorrect timeSlotsArr length: " + slots}));
    }
    for (const QVariant& hours : {QVariant(-1), QVariant("three"), QVariant(QVariantList{3}), QVariant()})
        Save(Week('0'), hours);
    EXPECT_THAT(LogCapture::Take(4), ElementsAre(LogLine{3, "TimeLimitHandler::Save: incorrect number of hours: -1"},
                                                 LogLine{3, "TimeLimitHandler::Save: incorrect number of hours: three"},
                                                 LogLine{3, "TimeLimitHandler::Save: incorrect number of hours: "},
                                                 LogLine{3, "TimeLimitHandler::Save: incorrect number of hours: "}));
    EXPECT_THAT(WrittenKeys(), IsEmpty());
}

TEST_F(TimeLimitTest, AnIllFormedWeekKeepsTheCurfewsThatAreThere)
{
    Start();
    Put(kUser, kMondayCurfew, Stored{ORB_STRATA_TYPE_OBJECT, 0, R"([{"from":0,"until":3600}])", 0});
    Settle();
    OpenSettings();
    std::string slots = Week('0');
    slots[167] = '2';
    LogCapture::Expect(2, "TimeLimitHandler::SaveDailyTimeLimits: Failed to parse " + slots);
    Save(slots, 8);
    EXPECT_EQ(R"([{"from":0,"until":3600}])", Find(kUser, kMondayCurfew).text);
}

TEST_F(TimeLimitTest, EnforcedDaysStayWhileTheOthersChange)
{
    Start();
    Constrain(kUser, kMondayCurfew, ORB_STRATA_CONSTRAINT_ENFORCED);
    Constrain(kUser, kTuesdayQuota, ORB_STRATA_CONSTRAINT_ENFORCED);
    Settle();
    OpenSettings();
    LogCapture::Take();
    Save(Week('0'), 1);
    EXPECT_EQ("[]", Find(kUser, kMondayCurfew).text);
    EXPECT_EQ(R"([{"from":0,"until":86400}])", Find(kUser, L"common.time.curfew.tuesday.ranges").text);
    EXPECT_EQ(86400, Find(kUser, kTuesdayQuota).number);
    EXPECT_EQ(3600, Find(kUser, L"common.time.quota.monday.duration").number);
}
