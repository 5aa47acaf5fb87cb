#include "delay_load/NlFlyerApi.h"
#include "delay_load/OrbDpApi.h"
#include "handlers/DeviceLockHandler.h"
#include "tests/handlers/HandlerTest.h"
#include "tests/support/FakeClock.h"

#include <QLocale>
#include <QTimer>

#include <limits>

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr const wchar_t* kTrigger = L"windows.browsing_protection.internal.time_limit_trigger";
constexpr const wchar_t* kExtension = L"windows.browsing_protection.internal.time_limit_extension";
constexpr const char* kNotStored =
    "StrataSettings::Property<std::chrono::duration<int,std::ratio<60>>>::Save: "
    "'windows.browsing_protection.internal.time_limit_extension' saving failed, result 31";
constexpr const char* kIndex = "@Veridan\\TimeLock\\Data:time_extended_by_index";
constexpr const char* kDescription = "@Veridan\\TimeLock\\Data:block_description";
constexpr const char* kRequestDialog = "@Veridan\\TimeLock\\Triggers:request_extend_time_dialog";
constexpr const char* kExtend = "@Veridan\\TimeLock\\Triggers:extend_time";
constexpr const char* kCancel = "@Veridan\\TimeLock\\Triggers:cancel_extend_time_dialog";

/// What the flyer library was asked to do; each call can be made to fail.
struct Flyers
{
    std::vector<std::wstring> calls;
    std::string failing;

    int Answer(const char* function, const std::wstring& call)
    {
        calls.push_back(call);
        return failing == function ? 9 : 0;
    }
};
Flyers* g_flyers = nullptr;

class DeviceLockTest : public HandlerTest
{
protected:
    DeviceLockTest()
    {
        g_flyers = &m_flyers;
        m_flyerTable->NlFlyer_CreateFlyer = [](int32_t, const wchar_t* title, const wchar_t* text, int32_t kind,
                                               NlFlyerHandle* flyer) {
            EXPECT_EQ(3, kind);
            *flyer = reinterpret_cast<NlFlyerHandle>(g_flyers);
            return g_flyers->Answer("create", L"create " + std::wstring(title) + L"|" + text);
        };
        m_flyerTable->NlFlyer_AddButton = [](NlFlyerHandle, const wchar_t* caption, const NlFlyerButton* button,
                                             int32_t) {
            const std::string action = button->action ? button->action : "";
            return g_flyers->Answer(button->action ? "action" : "close",
                                    L"button " + std::wstring(caption) + L"|" +
                                        std::wstring(action.begin(), action.end()));
        };
        m_flyerTable->NlFlyer_ShowFlyer = [](NlFlyerHandle, int32_t placement, int32_t) {
            EXPECT_EQ(-2, placement);
            return g_flyers->Answer("show", L"show");
        };
        m_flyerTable->NlFlyer_CloseFlyer = [](NlFlyerHandle) { return g_flyers->Answer("closeFlyer", L"closed"); };
    }

    void Start()
    {
        m_host.PageSets("@Veridan\\TimeLock\\Strings:block_description2", "Until %1");
        m_host.PageSets("@Veridan\\TimeLock\\Strings:block_description3", "Locked");
        m_host.PageSets("@Veridan\\TimeLock\\Strings:flyer_title", "%1 minutes left");
        m_host.PageSets("@Veridan\\TimeLock\\Strings:flyer_title_singular", "%1 minute left");
        m_host.PageSets("@Veridan\\TimeLock\\Strings:flyer_description", "Soon");
        m_host.PageSets("@Veridan\\TimeLock\\Strings:extend_caption", "Extend");
        m_host.PageSets("@Veridan\\TimeLock\\Strings:close_caption", "Close");
        m_system->Load();
        m_handler = std::make_unique<DeviceLockHandler>(m_system, m_user);
        ASSERT_TRUE(m_handler->Initialize(&m_host));
        m_host.Forget();
    }

    void ServiceTriggers(int value)
    {
        Put(kUser, kTrigger, value);
        Settle();
    }

    bool IsReasserting() const { return m_handler->findChild<QTimer*>()->isActive(); }

    Flyers m_flyers;
    SuiteTableGuard<NlFlyerTable> m_flyerTable{g_nlFlyer};
    FakeClock m_clock;
    std::unique_ptr<DeviceLockHandler> m_handler;
};

} // namespace

TEST_F(DeviceLockTest, EvaluatesTheTriggerWhenTheEventLoopRuns)
{
    Put(kUser, kTrigger, -1);
    Start();
    EXPECT_EQ("Until %1", m_host.String(kDescription));
    EXPECT_THAT(m_host.Take("trigger"), IsEmpty());
    m_handler->OnEventLoopReady();
    EXPECT_THAT(m_host.Take("trigger"), ElementsAre("show_block_dialog", "grab_shortcuts"));
}

TEST_F(DeviceLockTest, WarnsLocksReassertsAndReleases)
{
    Start();
    ServiceTriggers(2);
    EXPECT_THAT(m_host.Take("trigger"), ElementsAre("close_block_dialog", "release_shortcuts"));
    EXPECT_THAT(m_flyers.calls, ElementsAre(L"create 2 minutes left|Soon",
                                            L"button Extend|@Veridan\\TimeLock\\Triggers:request_extend_time_dialog",
                                            L"button Close|", L"show"));
    m_flyers.calls.clear();
    ServiceTriggers(1);
    EXPECT_EQ(L"create 1 minute left|Soon", m_flyers.calls.front());
    m_host.Forget();
    ServiceTriggers(-1);
    EXPECT_EQ("Locked", m_host.String(kDescription));
    EXPECT_THAT(m_host.Take("trigger"), ElementsAre("show_block_dialog", "grab_shortcuts"));
    EXPECT_TRUE(IsReasserting());
    Elapse(m_handler->findChild<QTimer*>(), 1500);
    EXPECT_THAT(m_host.Take("trigger"), ElementsAre("show_block_dialog", "grab_shortcuts"));
    m_flyers.calls.clear();
    ServiceTriggers(0);
    EXPECT_THAT(m_host.Take("trigger"), ElementsAre("close_block_dialog", "release_shortcuts"));
    EXPECT_THAT(m_flyers.calls, IsEmpty());
    EXPECT_FALSE(IsReasserting());
}

TEST_F(DeviceLockTest, EachFlyerCallMayFail)
{
    struct Row
    {
        const char *failing, *message;
        std::size_t calls;
    };
    Start();
    int trigger = 10;
    for (const Row& row :
         {Row{"create", "Error creating a flyer: 9", 1}, Row{"action", "Error adding action button: 9", 4},
          Row{"close", "Error adding close button: 9", 4}, Row{"show", "Error showing a flyer: 9", 5}})
    {
        m_flyers = {{}, row.failing};
        LogCapture::Take();
        ServiceTriggers(++trigger);
        EXPECT_EQ(row.calls, m_flyers.calls.size()) << row.failing;
        EXPECT_THAT(LogCapture::Take(4),
                    ElementsAre(LogLine{3, std::string("DeviceLockHandler::ShowFlyer: ") + row.message}));
    }
    EXPECT_EQ(L"closed", m_flyers.calls.back());
}

TEST_F(DeviceLockTest, ALockTellsWhenItEnds)
{
    m_clock.Set("2026-03-05T12:00:00");
    m_clock.SetOffset(60);
    Start();
    m_host.PageSets("@Veridan\\TimeLock\\Strings:tomorrow", "morgen");
    const auto until = [&](const char* utc) {
        ServiceTriggers(static_cast<int>(-FakeClock::Seconds(utc)));
        return m_host.String(kDescription);
    };
    EXPECT_EQ("Until Today 18:05", until("2026-03-05T17:05:00"));
    EXPECT_EQ("Until Today 23:59", until("2026-03-05T22:59:59"));
    EXPECT_EQ("Until morgen 00:00", until("2026-03-05T23:00:00"));
    EXPECT_EQ("Until morgen 23:30", until("2026-03-06T22:30:00"));
    const auto dated = [](int year, int month, int day, const char* time) {
        return ("Until " + QLocale().toString(QDate(year, month, day), QLocale::ShortFormat) + " " + time)
            .toStdString();
    };
    EXPECT_EQ(dated(2026, 3, 7, "07:00"), until("2026-03-07T06:00:00"));
    EXPECT_EQ(dated(2026, 4, 1, "07:00"), until("2026-04-01T06:00:00"));
    m_clock.Set("2026-12-31T12:00:00");
    EXPECT_EQ("Until morgen 07:00", until("2027-01-01T06:00:00"));
    m_host.PageSets("@Veridan\\TimeLock\\Strings:today", "heute");
    EXPECT_EQ("Until heute 20:00", until("2026-12-31T19:00:00"));
    m_clock.Set("2026-12-31T23:30:00"); // local time is in the next year
    EXPECT_EQ("Until heute 08:00", until("2027-01-01T07:00:00"));

    m_clock.Set("2027-03-27T12:00:00");
    m_clock.SetOffset(120, "2027-03-28T01:00:00"); // summer time begins in the night
    EXPECT_EQ("Until morgen 23:30", until("2027-03-28T21:30:00"));
}

TEST_F(DeviceLockTest, ALocksTextFollowsTheDate)
{
    m_clock.Set("2026-03-05T23:59:59");
    Start();
    ServiceTriggers(static_cast<int>(-FakeClock::Seconds("2026-03-06T07:00:00")));
    EXPECT_EQ("Until Tomorrow 07:00", m_host.String(kDescription));
    m_clock.Advance(1);
    Elapse(m_handler->findChild<QTimer*>(), 1500);
    EXPECT_EQ("Until Today 07:00", m_host.String(kDescription));
}

TEST_F(DeviceLockTest, AConstraintAloneNeitherWarnsNorLocks)
{
    Start();
    for (const int trigger : {5, -1})
    {
        ServiceTriggers(trigger);
        m_host.Forget();
        m_flyers.calls.clear();
        Constrain(kUser, kTrigger, trigger > 0 ? ORB_STRATA_CONSTRAINT_ENFORCED : 0);
        Settle();
        EXPECT_THAT(m_host.Take("trigger"), IsEmpty());
        EXPECT_THAT(m_flyers.calls, IsEmpty());
    }
}

TEST_F(DeviceLockTest, EachLockIsRecorded)
{
    static std::vector<std::wstring> s_payloads;
    s_payloads.clear();
    SuiteTableGuard<OrbDpTable> metrics(g_orbDp);
    metrics->OrbDpApi_MetricsRecordMajorEvent = [](int32_t code, const char* name, const wchar_t* payload) {
        EXPECT_EQ(600, code);
        EXPECT_STREQ("vdn_block", name);
        s_payloads.emplace_back(payload);
        return s_payloads.size() > 1 ? 4 : 0;
    };
    Start();
    ServiceTriggers(-1);
    EXPECT_THAT(s_payloads, ElementsAre(L"{\"type\":\"TL_Devicelock\"}"));
    LogCapture::Expect(2, "DeviceLockHandler::SendBlockMetrics: OrbDpApi_MetricsRecordMajorEvent failed with error: 4");
    ServiceTriggers(std::numeric_limits<int>::min());
    EXPECT_EQ(2u, s_payloads.size());

    m_host.PageSets(kIndex, 0);
    Fail("OrbStrata_SetInt64", kExtension, 31, 1);
    LogCapture::Expect(1, kNotStored);
    m_host.PageFires(kExtend); // shows the same lock again
    EXPECT_EQ(2u, s_payloads.size());
}

TEST_F(DeviceLockTest, ExtendsByTheChosenTime)
{
    Start();
    const int minutes[] = {5, 15, 30, 60};
    for (int index = 0; index < 4; ++index)
    {
        ServiceTriggers(-1 - index);
        m_host.Forget();
        m_host.PageSets(kIndex, index);
        m_host.PageFires(kExtend);
        EXPECT_THAT(m_host.Take("trigger"), ElementsAre("close_block_dialog", "release_shortcuts"));
        EXPECT_EQ(minutes[index], Find(kSystem, kExtension).number);
        EXPECT_FALSE(IsReasserting());
    }
}

TEST_F(DeviceLockTest, ALockThatIsBackAtOnceAfterAnExtensionIsANewOne)
{
    Start();
    ServiceTriggers(-1);
    m_host.PageSets(kIndex, 0);
    m_host.PageFires(kExtend);
    m_host.Forget();
    Put(kUser, kTrigger, 0);
    Deliver(); // and the event loop has not run yet
    ServiceTriggers(-1);
    EXPECT_THAT(m_host.Take("trigger"), ElementsAre("show_block_dialog", "grab_shortcuts"));
}

TEST_F(DeviceLockTest, ARepeatedExtensionPassesThroughZero)
{
    Start();
    m_host.PageSets(kIndex, 1);
    m_host.PageFires(kExtend);
    EXPECT_THAT(WrittenKeys(), ElementsAre(kExtension));
    m_host.PageFires(kExtend);
    EXPECT_THAT(WrittenKeys(), ElementsAre(kExtension, kExtension));
    EXPECT_EQ(15, Find(kSystem, kExtension).number);

    Fail("OrbStrata_SetInt64", kExtension, 31, 1);
    LogCapture::Expect(1, kNotStored);
    m_host.PageFires(kExtend);
    TakeWrites();
    m_host.PageFires(kExtend);
    EXPECT_THAT(WrittenKeys(), ElementsAre(kExtension, kExtension));
}

TEST_F(DeviceLockTest, AnUnknownChoiceExtendsAndReleasesNothing)
{
    Start();
    ServiceTriggers(-1);
    for (const QVariant& index : {QVariant(), QVariant(4), QVariant(-1), QVariant("text")})
    {
        m_host.PageFires(kRequestDialog);
        EXPECT_FALSE(IsReasserting());
        m_host.Forget();
        m_host.PageSets(kIndex, index);
        m_host.PageFires(kExtend);
        EXPECT_THAT(m_host.Take("trigger"), IsEmpty());
        EXPECT_THAT(WrittenKeys(), IsEmpty());
        EXPECT_TRUE(IsReasserting()); // the lock is still in force
    }
}

TEST_F(DeviceLockTest, TheExtendDialogPausesTheLockUntilItCloses)
{
    Start();
    ServiceTriggers(-1);
    m_host.Forget();
    m_host.PageFires(kRequestDialog);
    EXPECT_THAT(m_host.Take("trigger"), ElementsAre("show_extend_time_dialog"));
    EXPECT_FALSE(IsReasserting());
    m_host.PageFires(kCancel);
    EXPECT_TRUE(IsReasserting());

    m_host.PageFires(kRequestDialog);
    AnswerElevation(false);
    m_host.PageSets(kIndex, 0);
    LogCapture::Take();
    m_host.PageFires(kExtend);
    EXPECT_TRUE(IsReasserting());
    EXPECT_THAT(WrittenKeys(), IsEmpty());
    EXPECT_THAT(LogCapture::Take(4),
                ElementsAre(LogLine{3, "DeviceLockHandler::Elevate: Could not acquire elevated handle."}));
}

TEST_F(DeviceLockTest, ATriggerWhileTheDialogIsOpenNeitherCoversNorRevivesIt)
{
    Start();
    ServiceTriggers(-1);
    m_host.PageFires(kRequestDialog);
    ServiceTriggers(-2);
    EXPECT_FALSE(IsReasserting());
    m_host.PageFires(kCancel);
    EXPECT_TRUE(IsReasserting());

    m_host.PageFires(kRequestDialog);
    ServiceTriggers(0);
    m_host.PageFires(kCancel); // of a lock that is released by now
    EXPECT_FALSE(IsReasserting());
}

TEST_F(DeviceLockTest, AnExtensionThatCannotBeStoredLeavesTheLock)
{
    Start();
    ServiceTriggers(-1);
    m_host.PageSets(kIndex, 0);
    Fail("OrbStrata_SetInt64", kExtension, 31, 1);
    LogCapture::Expect(1, kNotStored);
    m_host.Forget();
    m_host.PageFires(kExtend);
    EXPECT_THAT(m_host.Take("trigger"),
                ElementsAre("close_block_dialog", "release_shortcuts", "show_block_dialog", "grab_shortcuts"));
    EXPECT_TRUE(IsReasserting());

    ServiceTriggers(5); // a warning that was seen is not repeated
    m_flyers.calls.clear();
    Fail("OrbStrata_SetInt64", kExtension, 31, 1);
    LogCapture::Expect(1, kNotStored);
    m_host.PageFires(kExtend);
    EXPECT_THAT(m_flyers.calls, IsEmpty());
}
