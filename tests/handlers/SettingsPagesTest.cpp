#include "handlers/BrowserExtensionsHandler.h"
#include "handlers/BrowsingProtectionHandler.h"
#include "handlers/DeviceLockHandler.h"
#include "handlers/FamilyRulesHandler.h"
#include "handlers/SafeBankingHandler.h"
#include "handlers/StatisticsHandler.h"
#include "handlers/TimeLimitHandler.h"
#include "handlers/WebFilteringHandler.h"
#include "handlers/WebsiteListHandler.h"
#include "tests/handlers/HandlerTest.h"
#include "tests/support/UrlCatcher.h"

#include <limits>

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr const wchar_t* kReinstallCounter = L"windows.browsing_protection.internal.reinstall_extensions";
constexpr const char* kReinstall = "@BrowserExtensions\\Triggers:reinstall";

class BrowsingProtectionTest : public HandlerTest
{
protected:
    void Start()
    {
        m_system->Load();
        m_handler = std::make_unique<BrowsingProtectionHandler>(m_system);
        ASSERT_TRUE(m_handler->Initialize(&m_host));
    }

    std::unique_ptr<BrowsingProtectionHandler> m_handler;
};

class BrowserExtensionsTest : public HandlerTest
{
protected:
    void Start()
    {
        StartMainGui();
        m_handler = std::make_unique<BrowserExtensionsHandler>(m_user, m_mainGui);
        ASSERT_TRUE(m_handler->Initialize(&m_host));
        m_host.Forget();
    }

    std::unique_ptr<BrowserExtensionsHandler> m_handler;
};

} // namespace

TEST_F(BrowsingProtectionTest, PublishesOptionsAndTheirReadOnlyFlagsWhenAsked)
{
    struct Row
    {
        const wchar_t* key;
        const char* id;
        bool byDefault;
    };
    Start();
    EXPECT_THAT(m_host.Take("set"), IsEmpty());
    for (const Row& row : {Row{L"block_suspicious_websites", "suspicious_sites_protection", true},
                           Row{L"block_illegal_websites", "illegal_sites_protection", false},
                           Row{L"show_link_reputations_on_search_results", "show_searchengines_rating", true}})
    {
        const std::wstring key = std::wstring(L"windows.browsing_protection.") + row.key;
        const std::string id = std::string("@BrowsingProtection\\Data:") + row.id;
        m_host.PageFires(kLoadData);
        EXPECT_EQ(QVariant(row.byDefault), m_host.Value(id.c_str()));
        EXPECT_EQ(QVariant(false), m_host.Value((id + "_readonly").c_str()));
        Put(kSystem, key.c_str(), !row.byDefault);
        Constrain(kSystem, key.c_str(), ORB_STRATA_CONSTRAINT_ENFORCED);
        Settle();
        m_host.PageFires(kLoadData);
        EXPECT_EQ(QVariant(!row.byDefault), m_host.Value(id.c_str()));
        EXPECT_EQ(QVariant(true), m_host.Value((id + "_readonly").c_str()));
    }
}

TEST_F(BrowsingProtectionTest, OpensTheStorePage)
{
    UrlCatcher urls;
    Start();
    m_host.PageFires("@Veridan\\Settings\\Triggers:open_chrome_web_store");
    ASSERT_EQ(1u, urls.Opened().size());
    EXPECT_EQ('?', urls.Opened()[0].back());
    EXPECT_THAT(LogCapture::Take(5),
                Contains(LogLine{5, "BrowsingProtectionHandler::OpenChromeWebStore: Opening Chrome web store"}));
}

TEST_F(BrowserExtensionsTest, PublishesTheSettingAsItIsStored)
{
    constexpr const wchar_t* kSkip = L"windows.browsing_protection.skip_activate_extensions";
    Put(kUser, kSkip, false);
    Constrain(kUser, kSkip, ORB_STRATA_CONSTRAINT_ENFORCED);
    Start();
    m_handler->Load();
    EXPECT_EQ(QVariant(false), m_host.Value("@BrowserExtensions\\Data:force_extensions"));
    EXPECT_EQ(QVariant(true), m_host.Value("@BrowserExtensions\\Data:force_extensions_readonly"));
}

TEST_F(BrowserExtensionsTest, AReinstallRaisesTheCounterAndIsRecorded)
{
    Put(kUser, kReinstallCounter, 41);
    Start();
    m_host.PageFires(kReinstall);
    EXPECT_EQ(42, Find(kUser, kReinstallCounter).number);
    EXPECT_THAT(m_host.Take("trigger"), ElementsAre("show_reinstall_dialog"));
    EXPECT_THAT(MetricEvents(), ElementsAre("browser_extensions_reinstall_triggered"));
    EXPECT_EQ(nullptr, m_mainGui->AdminHandle()); // no page is open that would release it
    OpenSettings();
    const auto before = m_mainGui->AdminHandle();
    m_host.PageFires(kReinstall);
    EXPECT_EQ(43, Find(kUser, kReinstallCounter).number);
    EXPECT_NE(before, m_mainGui->AdminHandle()); // each reinstall asks anew
}

TEST_F(BrowserExtensionsTest, ADeclinedReinstallWritesAndRecordsNothing)
{
    Start();
    AnswerElevation(false);
    LogCapture::Expect(2, kDeclined);
    m_host.PageFires(kReinstall);
    EXPECT_THAT(WrittenKeys(), IsEmpty());
    EXPECT_THAT(MetricEvents(), IsEmpty());
    EXPECT_THAT(m_host.Take("trigger"), IsEmpty());
    EXPECT_THAT(LogCapture::Take(4), Contains(LogLine{4, "BrowserExtensionsHandler::ReinstallExtensions: User declined "
                                                         "UAC prompt"}));
}

TEST_F(BrowserExtensionsTest, AnEnforcedCounterIsLeftAndTheReinstallStillRecorded)
{
    Put(kUser, kReinstallCounter, 7);
    Constrain(kUser, kReinstallCounter, ORB_STRATA_CONSTRAINT_ENFORCED);
    Start();
    m_host.PageFires(kReinstall);
    EXPECT_EQ(7, Find(kUser, kReinstallCounter).number);
    EXPECT_THAT(MetricEvents(), ElementsAre("browser_extensions_reinstall_triggered"));
}

TEST_F(BrowserExtensionsTest, ACounterThatCannotGrowStartsAnew)
{
    Put(kUser, kReinstallCounter, std::numeric_limits<int>::max());
    Start();
    m_host.PageFires(kReinstall);
    EXPECT_EQ(0, Find(kUser, kReinstallCounter).number);
}

TEST_F(BrowserExtensionsTest, AReinstallThatCannotBeReadOrSavedIsNotRecorded)
{
    Start();
    for (const char* failing : {"OrbStrata_GetInt32", "OrbStrata_SetInt32"})
    {
        LogCapture::Take();
        Fail(failing, kReinstallCounter, ORB_STRATA_ACCESS_DENIED, 0);
        m_host.PageFires(kReinstall);
        EXPECT_THAT(LogCapture::Take(2),
                    Contains(LogLine{2, "BrowserExtensionsHandler::ReinstallExtensions: Couldn't save "
                                        "ReinstallBrowserExtensionsTrigger Strata setting"}));
        EXPECT_THAT(MetricEvents(), IsEmpty());
        ClearFaults();
    }
}

TEST_F(BrowserExtensionsTest, AnElevationThatLeavesNoSettingsIsAnError)
{
    struct Unsettled : MainGuiHandler
    {
        using MainGuiHandler::MainGuiHandler;
        bool ShowUAC(bool) override { return true; }
    };
    m_mainGui = std::make_shared<Unsettled>(m_system, m_user);
    BrowserExtensionsHandler handler(m_user, m_mainGui);
    LogCapture::Expect(2, "BrowserExtensionsHandler::ReinstallExtensions: Unknown elevation error");
    handler.ReinstallExtensions();
    EXPECT_THAT(MetricEvents(), IsEmpty());
}

/// Every page that saves, at once, as in the plug-in.
TEST_F(HandlerTest, ElevatedSettingsDroppedBetweenTwoActionsLoseNothing)
{
    Seed();
    StartMainGui();
    WebFilteringHandler webFiltering(m_system, m_user);
    WebsiteListHandler websiteList(m_system, m_user, m_mainGui);
    TimeLimitHandler timeLimit(m_user, m_mainGui);
    ASSERT_TRUE(webFiltering.Initialize(&m_host, m_mainGui));
    ASSERT_TRUE(websiteList.Initialize(&m_host));
    ASSERT_TRUE(timeLimit.Initialize(&m_host));
    m_host.PageFires(kLoadData);
    const auto edit = [this](int hours, const char* site) {
        m_host.PageSets("@TimeLimit\\Data:weekday_hours_value", hours);
        m_host.PageFires(kSave);
        m_host.PageSets("@ContentControl\\WebsiteRestrictions:allowed_action_item", QVariantMap{{"new", site}});
    };

    OpenSettings();
    edit(3, "a.example");
    m_host.PageFires("@Veridan\\Settings\\Triggers:settings_ui_closed");
    LogCapture::Take();
    TakeWrites();
    edit(4, "b.example");
    EXPECT_THAT(WrittenKeys(), IsEmpty());
    EXPECT_THAT(LogCapture::Take(2),
                testing::UnorderedElementsAre(
                    LogLine{1, "WebFilteringHandler::Save: saveController is not initalized"},
                    LogLine{1, "TimeLimitHandler::Save: saveController is not initalized"},
                    LogLine{1, "WebsiteListHandler::GetSaveController: saveController is not initialized"}));
    EXPECT_EQ(10800, Find(kUser, L"common.time.quota.friday.duration").number);

    OpenSettings();
    edit(5, "c.example");
    EXPECT_EQ(18000, Find(kUser, L"common.time.quota.friday.duration").number);
    EXPECT_EQ(R"([{"allowed":true,"label":"","url":"a.example"},{"allowed":true,"label":"","url":"c.example"}])",
              Find(kUser, L"windows.browsing_protection.internal.sites.list").text);
}

TEST_F(HandlerTest, WhatIsMissingIsLoggedAndNothingShown)
{
    MainGuiHandler mainGui(nullptr, nullptr);
    BrowsingProtectionHandler browsingProtection(nullptr);
    BrowserExtensionsHandler browserExtensions(nullptr, nullptr);
    SafeBankingHandler safeBanking(nullptr, nullptr);
    WebFilteringHandler webFiltering(nullptr, nullptr);
    WebsiteListHandler websiteList(nullptr, nullptr, nullptr);
    FamilyRulesHandler familyRules(nullptr, nullptr);
    TimeLimitHandler timeLimit(nullptr, nullptr);
    DeviceLockHandler deviceLock(nullptr, nullptr);
    StatisticsHandler statistics(nullptr);
    EXPECT_TRUE(mainGui.Initialize(&m_host) && browsingProtection.Initialize(&m_host) &&
                browserExtensions.Initialize(&m_host) && safeBanking.Initialize(&m_host) &&
                webFiltering.Initialize(&m_host, nullptr) && websiteList.Initialize(&m_host) &&
                familyRules.Initialize(&m_host, nullptr) && timeLimit.Initialize(&m_host) &&
                deviceLock.Initialize(&m_host) && statistics.Initialize(&m_host));
    m_host.Forget();
    m_host.PageFires(kLoadData);
    m_host.PageFires(kSave);
    m_host.PageSets("@Veridan\\MainGUI:visible", true);
    m_host.PageFires("@ContentControl\\Triggers:show_website_list");
    m_host.PageFires(kReinstall);
    deviceLock.OnEventLoopReady();
    EXPECT_THAT(m_host.TakeChanges(), IsEmpty());
    m_host.PageSets("@ContentControl\\WebsiteRestrictions:allowed_action_item", QVariantMap{{"remove", "a.example"}});
    EXPECT_THAT(WrittenKeys(), IsEmpty());

    const auto log = LogCapture::Take(5);
    EXPECT_THAT(
        log, testing::IsSupersetOf({
                 LogLine{1, "MainGuiHandler::LoadStatus: systemSettings=0, m_dataPeer=1"},
                 LogLine{5, "MainGuiHandler::Initialize: user settings controller missing. UI is blind to browser "
                            "extension state"},
                 LogLine{2, "BrowsingProtectionHandler::Load: Can't load settings: system settings manager is not set"},
                 LogLine{2, "BrowserExtensionsHandler::Load: UserSettingsController doesn't exist!"},
                 LogLine{2, "BrowserExtensionsHandler::ReinstallExtensions: MainGuiHandler doesn't exist!"},
                 LogLine{1, "WebFilteringHandler::Save: gui handler doesn't exist"},
                 LogLine{1, "TimeLimitHandler::Save: gui handler doesn't exist"},
                 LogLine{1, "WebsiteListHandler::GetSaveController: gui handler doesn't exist"},
                 LogLine{2, "FamilyRulesHandler::SetupReloads: user settings controller doesn't exist, can't set up "
                            "reloads"},
                 LogLine{2, "FamilyRulesHandler::Load: Cannot load settings: system settings or user settings "
                            "controller missing"},
                 LogLine{5, "DeviceLockHandler::Initialize: user settings controller missing. UI is blind to time lock "
                            "changes"},
                 LogLine{3, "StatisticsHandler::UpdateStatistics: Cannot get usersettings, unable to read "
                            "statistics!"},
             }));
    EXPECT_EQ(9, std::count_if(log.begin(), log.end(), [](const LogLine& line) { return line.level <= 2; }));
}
