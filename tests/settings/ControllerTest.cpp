#include "settings/binding/UserSettingsController.h"
#include "settings/model/VdnSettings.h"
#include "tests/support/LogCapture.h"
#include "tests/support/PlatformFakes.h"
#include "tests/support/RetryTimers.h"
#include "tests/support/StoreTest.h"

#include <algorithm>

using testing::ElementsAre;
using testing::IsEmpty;
using SystemController = SystemSettingsController<VdnSettings>;
using UserController = UserSettingsController<VdnSettings>;

namespace
{

constexpr const wchar_t* kTimeEnabled = L"common.time.enabled";
constexpr const wchar_t* kTrigger = L"windows.browsing_protection.internal.time_limit_trigger";
constexpr const wchar_t* kBrowserType = L"windows.browsing_protection.internal.default_browser_type";
constexpr const char* kOtherUser = "S-1-5-21-1-2-3-1002";
const std::string kControllerName = "UserSettingsController<class VdnSettings>::";
const std::string kScopeName = "StrataSettings::ScopedSettings<class VdnSettings>::";

class ControllerTest : public StoreTest
{
protected:
    UserController::Registration Record(const StrataSettings::PropertyBase& property)
    {
        return m_user->Subscribe(
            property, [this](const std::wstring& key) { m_told.push_back(key); });
    }

    std::vector<std::wstring> m_told;
    RetryTimers m_retries;
    std::shared_ptr<SystemController> m_system = std::make_shared<SystemController>(nullptr, L"vdn_gui");
    std::unique_ptr<UserController> m_user = std::make_unique<UserController>(kUser, m_system, true);
};

/// One active session, with a user whose SID is kUser; the process runs as the system.
class ChosenUserTest : public ControllerTest
{
protected:
    ChosenUserTest()
    {
        m_sessions.sessions = {{1, true}};
        m_sessions.users[1] = {L"anna", L"HOME"};
        m_sessions.accounts[L"HOME\\anna"] = {1, 5, 0, 0, 0, 0, 0, 5, 21, 0, 0,    0, 1, 0,
                                              0, 0, 2, 0, 0, 0, 3, 0, 0,  0, 0xE9, 3, 0, 0};
        m_sessions.processUser = {1, 1, 0, 0, 0, 0, 0, 5, 18, 0, 0, 0};
    }

    std::string ChosenSid() const { return UserController::Create(m_system, false)->CurrentSid(); }

    FakeSessions m_sessions;
};

} // namespace

TEST_F(ChosenUserTest, IsTheSessionsElseTheProcessesElseTheStoresCaller)
{
    const auto expectChosen = [this](const char* sid, const std::vector<LogLine>& lines) {
        LogCapture::Take();
        EXPECT_EQ(sid, ChosenSid());
        EXPECT_EQ(lines, LogCapture::Take(4));
    };
    const std::string name = kControllerName + "Create: ";
    const LogLine noSession{4, name + "AllUsers().GetActiveSession() returned an invalid ID. Using system default user "
                                      "for initialization"};
    expectChosen(kUser, {});
    m_sessions.accounts.clear();
    expectChosen(kSystem,
                 {{2, name + "LoggedInUser::FromActiveUser().GetSid() returned an empty string! Error: 1332"}});
    m_sessions.sessions = {{1, false}};
    expectChosen(kSystem, {noSession});
    m_sessions.processUserError = 5;
    expectChosen("",
                 {{2, name + "CurrentUser().GetSid() failed. Defaulting to ORB_STRATA_SCOPE_CURRENT_USER"}, noSession});
}

TEST_F(ControllerTest, AScopeIsOpenedAndLoadedOnFirstUse)
{
    Put(kUser, kTimeEnabled, true);
    EXPECT_EQ(1u, OpenHandles());
    EXPECT_TRUE(m_user->Settings().time.enabled.Get());
    EXPECT_EQ(2u, OpenHandles());
    EXPECT_THAT(LogCapture::Take(5),
                testing::IsSupersetOf({LogLine{5, kControllerName + "Emplace: entering"},
                                       LogLine{5, kControllerName + "Emplace: '" + kUser + "' emplaced"},
                                       LogLine{5, kControllerName + "Emplace: leaving"}}));
}

TEST_F(ControllerTest, AStoreThatDoesNotOpenIsTriedAgainByItselfButNotOnAccess)
{
    Fail("OrbStrata_OpenHandle", nullptr, 31, 0);
    m_user = std::make_unique<UserController>(kUser, m_system, false);
    const auto registration = Record(m_user->Settings().internal.timeLimitTrigger);
    m_user->WritableSettings().internal.mainGuiOpen.Set(true); // is not lost
    EXPECT_FALSE(m_user->Settings().time.enabled.Get());
    EXPECT_FALSE(m_user->HasHandle());
    EXPECT_THAT(LogCapture::Take(2),
                ElementsAre(LogLine{2, kScopeName + "ScopedSettings: Failed with error 31, strata handle not "
                                                    "available"}));
    EXPECT_TRUE(m_retries.Elapse());
    EXPECT_THAT(LogCapture::Take(),
                ElementsAre(LogLine{5, kControllerName + "Load: Strata handle was not valid, resetting."},
                            LogLine{2, kScopeName + "ResetHandle: Failed with error 31, strata handle not "
                                                    "available"}));

    Put(kUser, kTrigger, -1);
    ClearFaults();
    EXPECT_TRUE(m_retries.Elapse());
    EXPECT_FALSE(m_retries.Elapse());
    EXPECT_THAT(m_told, ElementsAre(kTrigger));
    EXPECT_EQ(-1, m_user->Settings().internal.timeLimitTrigger.Get());
    EXPECT_EQ(1, Find(kUser, L"windows.browsing_protection.internal.main_gui_open").number);
}

TEST_F(ControllerTest, AKeyThatCouldNotBeReadIsToldOnceItCan)
{
    Put(kUser, kTrigger, -1);
    for (const char* read : {"OrbStrata_GetInt32", "OrbStrata_GetConstraints"})
    {
        Constrain(kUser, kTrigger, ORB_STRATA_CONSTRAINT_ENFORCED);
        Settle();
        Fail(read, kTrigger, ORB_STRATA_STORE_FAILED, 2);
        m_user = std::make_unique<UserController>(kUser, m_system, false);
        const auto registration = Record(m_user->Settings().internal.timeLimitTrigger);
        m_told.clear();
        EXPECT_TRUE(m_retries.Elapse()); // fails once more
        EXPECT_THAT(m_told, IsEmpty());
        EXPECT_TRUE(m_retries.Elapse());
        EXPECT_FALSE(m_retries.Elapse());
        EXPECT_THAT(m_told, ElementsAre(kTrigger));
        EXPECT_EQ(-1, m_user->Settings().internal.timeLimitTrigger.Get());
        EXPECT_TRUE(m_user->Settings().internal.timeLimitTrigger.IsEnforced());
        Constrain(kUser, kTrigger, 0);
    }
    LogCapture::Take();
}

TEST_F(ControllerTest, ARefusedSubscriptionIsTriedAgainAndWhatWasMissedIsTold)
{
    Fail("OrbStrata_Subscribe", kTrigger, 31, 3);
    const auto registration = Record(m_user->Settings().internal.timeLimitTrigger);
    Put(kUser, kTrigger, -1);
    Settle();
    EXPECT_TRUE(m_retries.Elapse()); // refused once more
    EXPECT_THAT(m_told, IsEmpty());
    EXPECT_TRUE(m_retries.Elapse());
    EXPECT_FALSE(m_retries.Elapse());
    EXPECT_THAT(m_told, ElementsAre(kTrigger));
    Put(kUser, kTrigger, 0);
    Settle();
    EXPECT_THAT(m_told, ElementsAre(kTrigger, kTrigger));
    EXPECT_EQ(3u, LogCapture::Take(2).size());
}

/// Neither the log nor what can be read suffers from what cannot.
TEST_F(ControllerTest, WhatStaysMissingIsTriedOnceAtATimeAndHoldsUpNothing)
{
    Put(kUser, kTrigger, -1);
    Put(kUser, kBrowserType, 3);
    Fail("OrbStrata_GetInt32", nullptr, ORB_STRATA_STORE_FAILED, 0);
    m_user->Settings();
    LogCapture::Take();
    m_retries.Elapse();
    EXPECT_EQ(1u, LogCapture::Take(2).size());

    ClearFaults();
    Fail("OrbStrata_GetInt32", kTrigger, ORB_STRATA_STORE_FAILED, 0);
    for (int i = 0; i < 3; ++i)
        m_retries.Elapse();
    EXPECT_EQ(3, m_user->Settings().internal.defaultBrowserType.Get());
    EXPECT_FALSE(m_user->Settings().internal.defaultBrowserType.ReadFailed());
    EXPECT_TRUE(m_user->Settings().internal.timeLimitTrigger.ReadFailed());
    LogCapture::Take();
}

TEST_F(ControllerTest, SaveSavesEveryScopeAndTellsOfOneWithoutAHandle)
{
    m_user->Emplace(kUser).Settings().internal.mainGuiOpen.Set(true);
    m_user->Emplace(kOtherUser).Settings().internal.mainGuiOpen.Set(true);
    EXPECT_TRUE(m_user->Save());
    EXPECT_EQ(1, Find(kOtherUser, L"windows.browsing_protection.internal.main_gui_open").number);

    Fail("OrbStrata_OpenHandle", nullptr, 31, 1);
    m_user->Emplace("S-1-5-21-1-2-3-1003");
    LogCapture::Take();
    m_user->Emplace(kUser).Settings().internal.mainGuiOpen.Set(false);
    EXPECT_FALSE(m_user->Save());
    EXPECT_THAT(LogCapture::Take(2), ElementsAre(LogLine{2, kScopeName + "Save: Cannot save null handle. "
                                                                         "SID='S-1-5-21-1-2-3-1003'"}));
    EXPECT_EQ(0, Find(kUser, L"windows.browsing_protection.internal.main_gui_open").number);
}

TEST_F(ControllerTest, ARequestedSaveIsNotLostAtTheEnd)
{
    m_user->WritableSettings().internal.mainGuiOpen.Set(true);
    m_user->RequestSave(kUser);
    m_user->RequestSave(kUser);
    m_user.reset();
    const auto writes = TakeWrites();
    ASSERT_EQ(1u, writes.size());
    EXPECT_EQ(L"windows.browsing_protection.internal.main_gui_open", writes[0].key);
}

TEST_F(ControllerTest, ASaveThatFailedIsTriedAgainAtTheEnd)
{
    m_user->WritableSettings().internal.mainGuiOpen.Set(true);
    m_user->RequestSave(kUser);
    Fail("OrbStrata_SetBool", nullptr, ORB_STRATA_ACCESS_DENIED, 1);
    m_user.reset();
    EXPECT_EQ(1, Find(kUser, L"windows.browsing_protection.internal.main_gui_open").number);
}

TEST_F(ControllerTest, RemoveUnusedKeepsTheCurrentUserAndWhoWaits)
{
    m_user->Settings();
    m_user->Emplace(kOtherUser);
    m_user->Emplace("S-1-5-21-1-2-3-1003").Settings().internal.mainGuiOpen.Set(true);
    m_user->RequestSave("S-1-5-21-1-2-3-1003");
    LogCapture::Take();
    m_user->RemoveUnused();
    std::vector<LogLine> lines = LogCapture::Take();
    const LogLine threadStarts{5, kControllerName + "DelayedSaveProcessing: entering"}; // whenever it gets to it
    lines.erase(std::remove(lines.begin(), lines.end(), threadStarts), lines.end());
    EXPECT_THAT(lines, ElementsAre(LogLine{5, kControllerName + "RemoveUnused: '" + kOtherUser + "' erased"}));
    EXPECT_EQ(3u, OpenHandles());
    m_user.reset();
    EXPECT_EQ(1, Find("S-1-5-21-1-2-3-1003", L"windows.browsing_protection.internal.main_gui_open").number);
}

TEST_F(ControllerTest, ServesTheGroupsThatTheTreeHas)
{
    m_user->Serve<Settings::Time, Settings::Curfews>();
    EXPECT_TRUE(m_user->Serves(typeid(Settings::Time)));
    EXPECT_FALSE(m_user->Serves(typeid(Settings::Curfews))); // stands deeper in the tree
    EXPECT_FALSE(m_user->Serves(typeid(Settings::Internal)));
}

TEST_F(ControllerTest, SubscribersHearOfTheProductsChangesToTheCurrentUser)
{
    const auto registration = Record(m_user->Settings().time.enabled);
    EXPECT_TRUE(registration);
    EXPECT_FALSE(m_user->Subscribe(L"no.such.key", [](const std::wstring&) {}));
    m_user->Emplace(kOtherUser);

    Put(kOtherUser, kTimeEnabled, true);
    Settle();
    EXPECT_THAT(m_told, IsEmpty());
    Put(kUser, kTimeEnabled, true);
    Settle();
    EXPECT_THAT(m_told, ElementsAre(kTimeEnabled));
    EXPECT_TRUE(m_user->Settings().time.enabled.Get());
}

TEST_F(ControllerTest, AControllerWithoutAStoreSaysSo)
{
    Fail("OrbStrata_OpenElevatedHandle", nullptr, ORB_STRATA_ACCESS_DENIED, 0);
    Controller<VdnSettings> elevated(nullptr, kUser, L"vdn_gui", true);
    EXPECT_FALSE(elevated.HasHandle());
    EXPECT_FALSE(elevated.Load());
    EXPECT_FALSE(elevated.Save());
    EXPECT_FALSE(m_retries.Elapse());
    EXPECT_EQ(3u, LogCapture::Take(2).size());
    ClearFaults();
    elevated.LoadMissing(); // asks nobody
    EXPECT_FALSE(elevated.HasHandle());
    EXPECT_TRUE(elevated.Load());
    EXPECT_TRUE(elevated.HasHandle());
}
