#include "handlers/FamilyRulesHandler.h"
#include "tests/handlers/HandlerTest.h"
#include "tests/support/FakeClock.h"
#include "tests/support/PlatformFakes.h"

#include <QLocale>
#include <QTimer>

#include <limits>

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

std::string ShortTime(int hour, int minute)
{
    return QLocale().toString(QTime(hour, minute), QLocale::ShortFormat).toStdString();
}

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

    void PutRanges(const wchar_t* day, const char* json)
    {
        Put(kUser, std::wstring(L"common.time.curfew.") + day + L".ranges", Stored{ORB_STRATA_TYPE_OBJECT, 0, json, 0});
        Settle();
    }

    FakeClock m_clock;
    std::unique_ptr<FamilyRulesHandler> m_handler;
};

} // namespace

TEST_F(FamilyRulesTest, BedtimesComeFromTheRangesThatTouchMidnightElseFromTheOption)
{
    Start();
    PutInt64(L"common.time.curfew.options.weekends.range.from", 23 * 3600);
    PutInt64(L"common.time.curfew.options.weekends.range.until", 8 * 3600 + 1800);
    PutRanges(L"tuesday", R"([{"from":0,"until":25200},{"from":43200,"until":46800},{"from":77400,"until":86400}])");
    m_host.PageFires(kLoadData);
    EXPECT_EQ(ShortTime(21, 30), m_host.String("@TimeLimit\\Data:bedtime_weekday_start"));
    EXPECT_EQ(ShortTime(7, 0), m_host.String("@TimeLimit\\Data:bedtime_weekday_stop"));
    EXPECT_EQ(ShortTime(23, 0), m_host.String("@TimeLimit\\Data:bedtime_weekend_start"));
    EXPECT_EQ(ShortTime(8, 30), m_host.String("@TimeLimit\\Data:bedtime_weekend_stop"));

    PutRanges(L"tuesday", R"([{"from":0,"until":3600},{"from":3600,"until":21600},{"from":18000,"until":19800},
                              {"from":77400,"until":82800},{"from":79200,"until":86400}])"); // touch or overlap
    EXPECT_EQ(ShortTime(21, 30), m_host.String("@TimeLimit\\Data:bedtime_weekday_start"));
    EXPECT_EQ(ShortTime(6, 0), m_host.String("@TimeLimit\\Data:bedtime_weekday_stop"));
}

TEST_F(FamilyRulesTest, AnotherUserReloadsThePage)
{
    StartMainGui();
    m_handler = std::make_unique<FamilyRulesHandler>(m_system, m_user);
    ASSERT_TRUE(m_handler->Initialize(&m_host, m_mainGui));
    m_host.Forget();
    Q_EMIT m_mainGui->SelectedUserChanged({});
    EXPECT_THAT(m_host.Take("set"), Contains("minutes_remaining"));
}

TEST_F(FamilyRulesTest, MinutesCountDownEachMinuteAndStopAtNone)
{
    Put(kUser, kQuotas, true);
    PutInt64(kTuesdayQuota, 3600);
    PutInt64(kLastUpdate, FakeClock::Seconds("2026-03-03T11:59:00") * 10'000'000);
    PutInt64(kUsed, 3480);
    Start();
    m_host.PageFires(kLoadData);
    EXPECT_EQ(QVariant(2), m_host.Value(kRemaining));
    for (const int left : {1, 0})
    {
        PutInt64(kUsed, 3600 - 60 * left);
        Elapse(m_handler->findChild<QTimer*>(), 60'000);
        EXPECT_EQ(QVariant(left), m_host.Value(kRemaining));
    }
    EXPECT_FALSE(m_handler->findChild<QTimer*>()->isActive());
}

TEST_F(FamilyRulesTest, UsedUpTimeComesBackAtMidnight)
{
    Put(kUser, kQuotas, true);
    PutInt64(kTuesdayQuota, 0);
    PutInt64(L"common.time.quota.wednesday.duration", 1800);
    m_clock.Set("2026-03-03T22:59:59");
    Start();
    m_host.PageFires(kLoadData);
    QTimer* const nextDay = m_handler->findChildren<QTimer*>().back();
    Elapse(nextDay, 3'600'000);
    EXPECT_EQ(QVariant(0), m_host.Value(kRemaining));
    m_clock.Advance(3599);
    Elapse(nextDay, 3'600'000);
    EXPECT_EQ(QVariant(0), m_host.Value(kRemaining));
    m_clock.Advance(2);
    Elapse(nextDay, 2'000);
    EXPECT_EQ(QVariant(30), m_host.Value(kRemaining));
    EXPECT_FALSE(nextDay->isActive());
}

TEST_F(FamilyRulesTest, UnlimitedTimeIsFollowed)
{
    Put(kUser, kQuotas, true);
    PutInt64(kTuesdayQuota, 3600);
    m_clock.Set("2026-03-02T23:59:30"); // Monday has no limit
    Start();
    m_host.PageFires(kLoadData);
    EXPECT_EQ("unlimited", m_host.String(kRemaining));
    m_clock.Set("2026-03-03T00:00:30");
    Elapse(m_handler->findChild<QTimer*>(), 60'000);
    EXPECT_EQ(QVariant(60), m_host.Value(kRemaining));
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
    m_host.PageSets("@Hearth:DigiparentingData", QVariantMap{{"digiparenting_activated", true}});
    m_host.PageFires(kLoadData);
    EXPECT_EQ(QVariant(false), m_host.Value(kDpInitialized));
    LogCapture::Take();
    m_host.PageSets("@Hearth:DigiparentingData",
                    QVariantMap{{"digiparenting_activated", true}, {"strata_connected", true}});
    m_host.PageFires(kLoadData);
    EXPECT_EQ(QVariant(true), m_host.Value(kDpInitialized));
    EXPECT_THAT(LogCapture::Take(4),
                ElementsAre(LogLine{4, "FamilyRulesHandler::LogDigiParentingData: "
                                       R"({"digiparenting_activated":true,"strata_connected":true})"}));
}

TEST_F(FamilyRulesTest, WhatCouldNotBeReadAtTheStartIsCheckedOnceItCan)
{
    constexpr const wchar_t* kConfigured = L"windows.browsing_protection.internal.parental_controls_configured";
    Put(kUser, kConfigured, true);
    Fail("OrbStrata_GetBool", kConfigured, ORB_STRATA_STORE_FAILED, 2); // in both scopes
    Start();
    EXPECT_EQ(QVariant(false), m_host.Value(kDpInitialized));
    EXPECT_TRUE(m_user->LoadMissing());
    Settle();
    EXPECT_EQ(QVariant(true), m_host.Value(kDpInitialized));
    LogCapture::Take();
}

TEST_F(FamilyRulesTest, AdministratorsAreWarned)
{
    FakeToken token;
    token.administrator = false; // of the process; who uses it may be one, unelevated
    Start();
    for (const bool administrator : {true, false})
    {
        token.unelevatedAdministrator = administrator;
        m_host.PageFires(kLoadData);
        EXPECT_EQ(QVariant(administrator), m_host.Value("@FamilyRules\\AdminWarning:enabled"));
    }
}

TEST_F(FamilyRulesTest, TheWarningsLinkOpensTheUserAccounts)
{
    FakeLauncher launcher;
    Start();
    LogCapture::Expect(2, "FamilyRulesHandler::OnLinkClicked: Failed to call control panel. Error: 2");
    m_host.PageFires("@FamilyRules\\AdminWarning:LinkClicked");
    EXPECT_NE(std::wstring::npos, launcher.commandLine.find(L"control.exe\" userpasswords"));
    EXPECT_EQ(8u, launcher.flags);
}
