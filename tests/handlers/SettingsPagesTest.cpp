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

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr const wchar_t* kReinstallCounter = L"windows.browsing_protection.internal.reinstall_extensions";
constexpr const char* kReinstall = "@BrowserExtensions\\Triggers:reinstall";

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

TEST_F(BrowserExtensionsTest, AReinstallRaisesTheCounterAndIsRecorded)
{
    Put(kUser, kReinstallCounter, 41);
    Start();
    m_host.PageFires(kReinstall);
    EXPECT_EQ(42, Find(kUser, kReinstallCounter).number);
    EXPECT_THAT(m_host.Take("trigger"), ElementsAre("show_reinstall_dialog"));
    EXPECT_THAT(MetricEvents(), ElementsAre("browser_extensions_reinstall_triggered"));
    EXPECT_EQ(nullptr, m_mainGui->Elevated()); // no page is open that would release it
    OpenSettings();
    const auto before = m_mainGui->Elevated();
    m_host.PageFires(kReinstall);
    EXPECT_EQ(43, Find(kUser, kReinstallCounter).number);
    EXPECT_NE(before, m_mainGui->Elevated()); // each reinstall asks anew
}

TEST_F(HandlerTest, TheTraceTellsWhatThePagesDo)
{
    UrlCatcher urls;
    Seed();
    StartMainGui();
    BrowsingProtectionHandler browsingProtection(m_system);
    WebFilteringHandler webFiltering(m_system, m_user);
    WebsiteListHandler websiteList(m_system, m_user, m_mainGui);
    ASSERT_TRUE(browsingProtection.Initialize(&m_host) && webFiltering.Initialize(&m_host, m_mainGui) &&
                websiteList.Initialize(&m_host));
    m_host.PageFires(kLoadData);
    m_host.PageFires("@Veridan\\Settings\\Triggers:open_chrome_web_store");
    m_host.PageFires("@ContentControl\\Triggers:request_show_website_list");
    m_host.PageSets("@ContentControl\\WebsiteRestrictions:allowed_action_item", QVariantMap{{"new", "a.example"}});
    EXPECT_THAT(
        LogCapture::Take(5),
        testing::IsSupersetOf({LogLine{5, "WebFilteringHandler::LoadCategoriesFromStrata: games = 1"},
                               LogLine{5, "BrowsingProtectionHandler::OpenChromeWebStore: Opening Chrome web store"},
                               LogLine{5, "WebsiteListHandler::HandleAllowedActionItem: Action item empty"}}));
}

TEST_F(HandlerTest, AWebsiteListMayBeReadOnly)
{
    WebsiteListHandler websiteList(m_system, m_user, nullptr);
    ASSERT_TRUE(websiteList.Initialize(&m_host));
    websiteList.setReadOnly(true);
    EXPECT_EQ(QVariant(true), m_host.Value("@ContentControl\\WebsiteRestrictions:readonly_table"));
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
