#include "handlers/FamilyRulesHandler.h"
#include "handlers/RemainingTime.h"
#include "platform/LastError.h"
#include "platform/ProcessLauncher.h"
#include "platform/Token.h"
#include "tests/handlers/HandlerTest.h"
#include "tests/support/FakeClock.h"

#include <QLocale>
#include <QTimer>

#include <limits>

using StrataSettings::Seconds;
using StrataSettings::TimePoint;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr const char* kRemaining = "@TimeLimit\\Data:minutes_remaining";
constexpr const char* kDpInitialized = "@ContentControl\\Data:current_user_dp_initialized";
constexpr const wchar_t* kQuotas = L"common.time.quota.enabled";
constexpr const wchar_t* kTuesdayQuota = L"common.time.quota.tuesday.duration";
constexpr const wchar_t* kUsed = L"windows.browsing_protection.internal.time_limit_data.device_mode.duration";
constexpr const wchar_t* kLastUpdate = L"windows.browsing_protection.internal.time_limit_data.device_mode.last_update";
constexpr const wchar_t* kExtension = L"windows.browsing_protection.internal.time_limit_data.browser_mode.extension";

std::string ShortTime(int hour, int minute)
{
    return QLocale().toString(QTime(hour, minute), QLocale::ShortFormat).toStdString();
}

class FakeLauncher : public Platform::ProcessLauncher
{
public:
    std::wstring SystemFolder() override { return L"/system"; }
    Platform::KernelHandle Start(const std::wstring&, const std::wstring& commandLine, std::uint32_t flags,
                                 const wchar_t*) override
    {
        m_started.push_back(commandLine + L" " + std::to_wstring(flags));
        Platform::SetLastError(2);
        return nullptr;
    }

    std::vector<std::wstring> m_started;
};

class FakeToken : public Platform::Token
{
public:
    bool IsMemberOfBuiltinGroup(Platform::KernelHandle token, std::uint32_t group) override
    {
        return m_administrator && token == nullptr && group == 544;
    }
    bool IsLowIntegrity() override { return false; }

    bool m_administrator = false;
};

class FamilyRulesTest : public HandlerTest
{
protected:
    FamilyRulesTest() { m_clock.Set("2026-03-03T12:00:00"); } // a Tuesday

    void Start()
    {
        m_system->Load();
        m_handler = std::make_unique<FamilyRulesHandler>(m_system, m_user);
        ASSERT_TRUE(m_handler->Initialize(&m_host, nullptr));
        m_host.Forget();
    }

    void PutInt64(const wchar_t* key, std::int64_t value)
    {
        Put(kUser, key, Stored{ORB_STRATA_TYPE_INT64, value, {}, 0});
        Settle();
    }

    void PutTime(const wchar_t* key, const char* utc) { PutInt64(key, FakeClock::Seconds(utc) * 10'000'000); }

    void PutRanges(const wchar_t* day, const char* json)
    {
        Put(kUser, std::wstring(L"common.time.curfew.") + day + L".ranges", Stored{ORB_STRATA_TYPE_OBJECT, 0, json, 0});
        Settle();
    }

    std::string Remaining()
    {
        m_host.PageFires(kLoadData);
        return m_host.Text(kRemaining);
    }

    bool IsCountingDown() const { return m_handler->findChild<QTimer*>()->isActive(); }

    FakeClock m_clock;
    Platform::ServiceReplacement<Platform::Clock> m_clockReplacement{m_clock};
    std::unique_ptr<FamilyRulesHandler> m_handler;
};

} // namespace

TEST_F(FamilyRulesTest, EachSwitchShowsItsSetting)
{
    struct Row
    {
        const wchar_t* key;
        const char* id;
    };
    Start();
    for (const Row& row :
         {Row{L"common.content.enabled", "@ContentControl\\Data:enabled"},
          Row{L"windows.browsing_protection.search_result_filter.enabled",
              "@ContentControl\\Data:search_result_filter_enabled"},
          Row{kQuotas, "@TimeLimit\\Data:quotas_enabled"},
          Row{L"common.time.curfew.enabled", "@TimeLimit\\Data:curfews_enabled"},
          Row{L"common.time.curfew.options.school_nights.enabled", "@TimeLimit\\Data:bedtime_weekday_enabled"},
          Row{L"common.time.curfew.options.weekends.enabled", "@TimeLimit\\Data:bedtime_weekend_enabled"}})
    {
        for (const bool on : {true, false})
        {
            Put(kUser, row.key, on);
            Settle();
            m_host.PageFires(kLoadData);
            EXPECT_EQ(QVariant(on), m_host.Value(row.id)) << row.id;
        }
    }
}

TEST_F(FamilyRulesTest, ThePageIsShownWhileAnyOfItsFeaturesIsActivated)
{
    constexpr const wchar_t* kFeatures[] = {L"windows.browsing_protection.web_content_control.activated",
                                            L"windows.browsing_protection.time_limits.activated",
                                            L"windows.browsing_protection.search_result_filter.activated"};
    Start();
    for (const wchar_t* only : kFeatures)
    {
        for (const wchar_t* key : kFeatures)
            Put(kUser, key, key == only);
        Settle();
        m_host.PageFires(kLoadData);
        EXPECT_EQ(QVariant(true), m_host.Value("@BrowsingProtection\\Data:show_family_rules_page"));
        Put(kUser, only, false);
        Settle();
        m_host.PageFires(kLoadData);
        EXPECT_EQ(QVariant(false), m_host.Value("@BrowsingProtection\\Data:show_family_rules_page"));
    }
}

TEST_F(FamilyRulesTest, AllowancesAreHoursAndMinutes)
{
    Start();
    PutInt64(kTuesdayQuota, 5400);
    PutInt64(L"common.time.quota.saturday.duration", 86400);
    m_host.PageFires(kLoadData);
    EXPECT_EQ(QVariant(1), m_host.Value("@TimeLimit\\Data:weekday_hours"));
    EXPECT_EQ(QVariant(30), m_host.Value("@TimeLimit\\Data:weekday_minutes"));
    EXPECT_EQ(QVariant(24), m_host.Value("@TimeLimit\\Data:weekend_hours"));
    EXPECT_EQ(QVariant(0), m_host.Value("@TimeLimit\\Data:weekend_minutes"));
}

TEST_F(FamilyRulesTest, BedtimesComeFromTheRangesThatTouchMidnightElseFromTheOption)
{
    Start();
    PutInt64(L"common.time.curfew.options.weekends.range.from", 23 * 3600);
    PutInt64(L"common.time.curfew.options.weekends.range.until", 8 * 3600 + 1800);
    PutRanges(L"tuesday", R"([{"from":0,"until":25200},{"from":43200,"until":46800},{"from":77400,"until":86400}])");
    m_host.PageFires(kLoadData);
    EXPECT_EQ(ShortTime(21, 30), m_host.Text("@TimeLimit\\Data:bedtime_weekday_start"));
    EXPECT_EQ(ShortTime(7, 0), m_host.Text("@TimeLimit\\Data:bedtime_weekday_stop"));
    EXPECT_EQ(ShortTime(23, 0), m_host.Text("@TimeLimit\\Data:bedtime_weekend_start"));
    EXPECT_EQ(ShortTime(8, 30), m_host.Text("@TimeLimit\\Data:bedtime_weekend_stop"));
}

TEST_F(FamilyRulesTest, OnlyTuesdaysAndSaturdaysKeysReloadThePage)
{
    Start();
    PutInt64(L"common.time.quota.monday.duration", 3600);
    PutRanges(L"friday", R"([{"from":0,"until":3600}])");
    EXPECT_THAT(m_host.Take("set"), IsEmpty());
    PutInt64(kTuesdayQuota, 7200);
    EXPECT_EQ(QVariant(2), m_host.Value("@TimeLimit\\Data:weekday_hours"));
    m_host.Forget();
    for (const wchar_t* day : {L"tuesday", L"saturday"})
    {
        PutRanges(day, R"([{"from":0,"until":3600}])");
        EXPECT_THAT(m_host.Take("set"), Contains("minutes_remaining"));
    }
    PutInt64(L"common.time.quota.saturday.duration", 7200);
    EXPECT_THAT(m_host.Take("set"), Contains("weekend_hours"));
}

TEST_F(FamilyRulesTest, MinutesCountDownEachMinuteAndStopAtNone)
{
    Put(kUser, kQuotas, true);
    PutInt64(kTuesdayQuota, 3600);
    PutTime(kLastUpdate, "2026-03-03T11:59:00");
    PutInt64(kUsed, 3600 - 61);
    Start();
    EXPECT_EQ("2", Remaining()); // a started minute counts
    EXPECT_TRUE(IsCountingDown());
    PutInt64(kUsed, 3600 - 60);
    m_handler->OnRefreshQuotasRemaining();
    EXPECT_EQ(QVariant(1), m_host.Value(kRemaining));
    PutInt64(kUsed, 5000);
    m_handler->OnRefreshQuotasRemaining();
    EXPECT_EQ(QVariant(0), m_host.Value(kRemaining));
    EXPECT_FALSE(IsCountingDown());
}

TEST_F(FamilyRulesTest, YesterdaysUseDoesNotCount)
{
    Put(kUser, kQuotas, true);
    PutInt64(kTuesdayQuota, 3600);
    PutInt64(L"common.time.quota.wednesday.duration", 1800);
    PutTime(kLastUpdate, "2026-03-03T20:00:00");
    PutInt64(kUsed, 3600);
    Start();
    EXPECT_EQ("0", Remaining());
    m_clock.Set("2026-03-04T00:00:30");
    EXPECT_EQ("30", Remaining());
    m_clock.Set("2026-03-02T12:00:00"); // the clock is set back, to a Monday without a limit
    EXPECT_EQ("unlimited", Remaining());
}

TEST_F(FamilyRulesTest, AsMuchAsTheDayHasIsUnlimited)
{
    Start();
    EXPECT_EQ("unlimited", Remaining()); // quotas are off
    EXPECT_TRUE(IsCountingDown());
    Put(kUser, kQuotas, true);
    PutInt64(kTuesdayQuota, 3600);
    m_clock.Set("2026-03-03T22:59:59");
    EXPECT_EQ("60", Remaining());
    m_clock.Set("2026-03-03T23:00:00");
    EXPECT_EQ("unlimited", Remaining());
}

TEST_F(FamilyRulesTest, AnExtensionLeavesAtLeastItsTime)
{
    Put(kUser, kQuotas, true);
    PutInt64(kTuesdayQuota, 600);
    PutTime(kLastUpdate, "2026-03-03T11:00:00");
    PutInt64(kUsed, 600);
    PutTime(L"windows.browsing_protection.internal.time_limit_data.device_mode.extension", "2026-03-03T12:15:00");
    Start();
    EXPECT_EQ("10", Remaining()); // the browser's own allowance is the smaller one
    PutTime(kExtension, "2026-03-03T12:30:00");
    EXPECT_EQ("15", Remaining());
    m_clock.Set("2026-03-03T12:14:30");
    EXPECT_EQ("1", Remaining());
    m_clock.Set("2026-03-03T12:15:00");
    EXPECT_EQ("0", Remaining());
}

TEST_F(FamilyRulesTest, MalformedTrackingDataGivesNoMoreThanTheDay)
{
    Put(kUser, kQuotas, true);
    PutInt64(kTuesdayQuota, 3600);
    PutTime(kLastUpdate, "2026-03-03T11:00:00");
    PutInt64(kUsed, std::numeric_limits<std::int64_t>::min());
    PutInt64(kExtension, std::numeric_limits<std::int64_t>::min());
    Start();
    EXPECT_EQ("60", Remaining());
    PutInt64(kExtension, std::numeric_limits<std::int64_t>::max());
    PutInt64(L"windows.browsing_protection.internal.time_limit_data.device_mode.extension",
             std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ("unlimited", Remaining());
}

TEST_F(FamilyRulesTest, TheLocalDayDecidesInZonesAndOverDaylightSaving)
{
    Put(kUser, kQuotas, true);
    for (const wchar_t* day : {L"saturday", L"sunday", L"monday"})
        PutInt64((std::wstring(L"common.time.quota.") + day + L".duration").c_str(), day[1] == L'u' ? 1200 : 3600);
    Start();
    m_clock.SetOffset(60);
    m_clock.SetOffset(120, "2026-03-29T01:00:00"); // 29 March has 23 hours
    m_clock.Set("2026-03-28T23:30:00");            // Sunday, 00:30
    EXPECT_EQ("20", Remaining());
    m_clock.Set("2026-03-29T21:30:00"); // Sunday, 23:30
    EXPECT_EQ("20", Remaining());
    m_clock.Set("2026-03-29T22:00:00"); // Monday, 00:00
    EXPECT_EQ("60", Remaining());

    m_clock.SetOffset(60, "2026-10-25T01:00:00"); // 25 October has 25 hours
    m_clock.Set("2026-10-25T22:30:00");           // Sunday, 23:30
    EXPECT_EQ("20", Remaining());
    m_clock.Set("2026-10-25T23:00:00"); // Monday, 00:00
    EXPECT_EQ("60", Remaining());
    m_clock.SetOffset(330, "2026-11-01T00:00:00");
    m_clock.Set("2026-11-07T18:29:00"); // Saturday, 23:59
    EXPECT_EQ("unlimited", Remaining());
    m_clock.Set("2026-11-07T18:30:00"); // Sunday, 00:00
    EXPECT_EQ("20", Remaining());
}

TEST_F(FamilyRulesTest, ATimeThatCannotBeConvertedAllowsTheWholeDay)
{
    VdnSettings settings;
    settings.time.quotas.enabled.Set(true);
    settings.time.quotas.days[2].Duration.Set(Seconds(60));
    const TimePoint tuesday(std::chrono::seconds(FakeClock::Seconds("2026-03-03T12:00:00")));
    EXPECT_EQ(Seconds(60), TimeUtil::DayOfWeek(settings.time, tuesday));
    EXPECT_EQ(Seconds(86400), TimeUtil::DayOfWeek(settings.time, TimePoint()));
    m_clock.m_error = 22;
    LogCapture::Expect(2, "TimeUtil::DayOfWeek: localtime_s returned 22");
    EXPECT_EQ(Seconds(86400), TimeUtil::DayOfWeek(settings.time, tuesday));
    settings.time.quotas.enabled.Set(false);
    EXPECT_EQ(Seconds(86400), TimeUtil::DayOfWeek(settings.time, tuesday));
}

TEST_F(FamilyRulesTest, ThePlatformAccountDecidesUnlessInLegacyMode)
{
    Put(kSystem, L"common.digiparenting.activated", true);
    Start();
    EXPECT_THAT(LogCapture::Take(5),
                Contains(LogLine{5, "FamilyRulesHandler::CheckTurnOnPCPageNecessity: Class not initialised or not in "
                                    "legacy mode."}));
    m_host.PageFires(kLoadData);
    EXPECT_EQ(QVariant(false), m_host.Value(kDpInitialized));
    EXPECT_THAT(LogCapture::Take(4),
                ElementsAre(LogLine{4, "FamilyRulesHandler::LogDigiParentingData: digiParentingData empty"}));
    m_host.PageSets("@Hearth:DigiparentingData",
                    QVariantMap{{"digiparenting_activated", true}, {"strata_connected", true}});
    m_host.PageFires(kLoadData);
    EXPECT_EQ(QVariant(true), m_host.Value(kDpInitialized));
    EXPECT_THAT(LogCapture::Take(4),
                ElementsAre(LogLine{4, "FamilyRulesHandler::LogDigiParentingData: "
                                       R"({"digiparenting_activated":true,"strata_connected":true})"}));
}

TEST_F(FamilyRulesTest, LegacyModeShowsWhetherParentalControlsAreConfigured)
{
    Put(kUser, L"windows.browsing_protection.internal.parental_controls_configured", true);
    Start();
    EXPECT_EQ(QVariant(true), m_host.Value(kDpInitialized));
    m_handler.reset();
    Put(kUser, L"windows.browsing_protection.internal.parental_controls_configured", false);
    Settle();
    Start();
    EXPECT_EQ(QVariant(false), m_host.Value(kDpInitialized));
    m_host.PageFires("@Veridan\\Settings\\Triggers:activate_legacy_parenting");
    EXPECT_EQ(QVariant(true), m_host.Value(kDpInitialized));
    EXPECT_THAT(m_host.Take("trigger"), ElementsAre("load_data"));
}

TEST_F(FamilyRulesTest, MissingSettingsAreReportedAndLeaveThePage)
{
    LogCapture::Expect(2, "FamilyRulesHandler::SetupReloads: user settings controller doesn't exist, can't set up "
                          "reloads");
    LogCapture::Expect(2, "FamilyRulesHandler::Load: Cannot load settings: system settings or user settings controller "
                          "missing");
    FamilyRulesHandler handler(m_system, nullptr);
    ASSERT_TRUE(handler.Initialize(&m_host, nullptr));
    m_host.Forget();
    m_host.PageFires(kLoadData);
    EXPECT_THAT(m_host.Take("set"), IsEmpty());
}

TEST_F(FamilyRulesTest, AdministratorsAreWarned)
{
    FakeToken token;
    const Platform::ServiceReplacement<Platform::Token> replacement(token);
    Start();
    for (const bool administrator : {true, false})
    {
        token.m_administrator = administrator;
        m_host.PageFires(kLoadData);
        EXPECT_EQ(QVariant(administrator), m_host.Value("@FamilyRules\\AdminWarning:enabled"));
    }
}

TEST_F(FamilyRulesTest, TheWarningsLinkOpensTheUserAccounts)
{
    FakeLauncher launcher;
    const Platform::ServiceReplacement<Platform::ProcessLauncher> replacement(launcher);
    Start();
    LogCapture::Expect(2, "FamilyRulesHandler::OnLinkClicked: Failed to call control panel. Error: 2");
    m_host.PageFires("@FamilyRules\\AdminWarning:LinkClicked");
    ASSERT_EQ(1u, launcher.m_started.size());
    EXPECT_NE(std::wstring::npos, launcher.m_started[0].find(L"control.exe\" userpasswords 8"));
}
