#include "tests/handlers/MainGuiTest.h"

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(MainGuiTest, SettingsPagesShareTheElevatedSettingsUntilTheyClose)
{
    StartMainGui();
    m_host.PageFires(Ids::kRequestSettings);
    const std::weak_ptr<ElevatedSettings> handle = m_mainGui->Elevated();
    m_host.PageFires("@Veridan\\Settings\\Triggers:request_show_wf_page");
    EXPECT_EQ(handle.lock(), m_mainGui->Elevated());
    m_host.PageFires(Ids::kSettingsClosed);
    EXPECT_TRUE(handle.expired());
    EXPECT_EQ(2u, OpenHandles());

    m_host.PageFires(Ids::kRequestSettings);
    m_host.PageFires("@CompSec\\Settings\\Triggers:ui_closed");
    EXPECT_EQ(nullptr, m_mainGui->Elevated());
}

TEST_F(MainGuiTest, ElevatedSettingsStayWhileAnyElevatedPageIsOpen)
{
    StartMainGui();
    m_host.PageFires(Ids::kRequestSettings);
    m_host.PageFires(Ids::kRequestWebsiteList);
    m_host.PageFires(Ids::kRequestAddWebsites);
    m_host.PageFires(Ids::kSettingsClosed);
    m_host.PageFires("@ContentControl\\Triggers:close_website_list");
    EXPECT_NE(nullptr, m_mainGui->Elevated());
    m_host.PageFires("@ContentControl\\Triggers:close_add_websites_from_browser");
    EXPECT_EQ(nullptr, m_mainGui->Elevated());
}

TEST_F(MainGuiTest, AnotherKindOfPageAsksAnew)
{
    StartMainGui();
    m_host.PageFires(Ids::kRequestWebsiteList);
    const auto first = m_mainGui->Elevated();
    m_host.PageFires(Ids::kRequestWebsiteList);
    EXPECT_EQ(first, m_mainGui->Elevated());
    m_host.PageFires(Ids::kRequestAddWebsites);
    EXPECT_NE(first, m_mainGui->Elevated());
    const auto second = m_mainGui->Elevated();
    m_host.PageFires(Ids::kRequestSettings); // settings pages take what is there
    EXPECT_EQ(second, m_mainGui->Elevated());
}

TEST_F(MainGuiTest, AWebsiteListShownWithoutARequestCountsAsOpen)
{
    StartMainGui();
    m_host.PageFires("@ContentControl\\Triggers:show_website_list");
    m_host.PageSets(Ids::kSaveAllowedUrl, "a.example");
    EXPECT_NE(nullptr, m_mainGui->Elevated());
    m_host.PageFires("@ContentControl\\Triggers:close_website_list");
    EXPECT_EQ(nullptr, m_mainGui->Elevated());
}

TEST_F(MainGuiTest, ADeclinedPromptShowsNoPageAndLeavesNoTrace)
{
    StartMainGui();
    AnswerElevation(false);
    for (const char* request : {Ids::kRequestSettings, Ids::kRequestWebsiteList, Ids::kRequestAddWebsites})
    {
        LogCapture::Expect(2, kDeclined);
        m_host.PageFires(request);
        EXPECT_EQ(nullptr, m_mainGui->Elevated());
    }
    EXPECT_THAT(m_host.Take("trigger"), IsEmpty());
    LogCapture::Expect(2, kDeclined);
    m_host.PageSets(Ids::kSaveAllowedUrl, "a.example");
    EXPECT_THAT(WrittenKeys(), IsEmpty());
    EXPECT_THAT(LogCapture::Take(4), testing::Contains(LogLine{3, "MainGuiHandler::OnNotify: Could not show UAC."}));

    AnswerElevation(true);
    m_host.PageSets(Ids::kSaveAllowedUrl, "a.example"); // drops the handle only when no page counts as open
    EXPECT_EQ(nullptr, m_mainGui->Elevated());
}

TEST_F(MainGuiTest, ARequestRefreshesAHiddenPageFirst)
{
    StartMainGui();
    m_host.PageFires(Ids::kRequestSettings);
    EXPECT_EQ(8u + 14u, SetsBesideStatus().size()); // 14 by load_data
    m_host.PageFires(Ids::kRequestSettings);        // a page is open
    EXPECT_EQ(14u, SetsBesideStatus().size());

    m_host.PageFires(Ids::kSettingsClosed);
    m_host.PageSets(Ids::kVisible, true);
    m_host.Forget();
    m_host.PageFires(Ids::kRequestSettings); // the main page shows fresh data already
    EXPECT_EQ(14u, SetsBesideStatus().size());
}

TEST_F(MainGuiTest, AnAllowedUrlIsAddedAndTheHandleDropped)
{
    StartMainGui();
    int reloads = 0;
    QObject::connect(m_mainGui.get(), &MainGuiHandler::ReloadAllowedWebsitesList, [&] { ++reloads; });
    m_host.PageSets(Ids::kSaveAllowedUrl, QString::fromUtf8("http://b\xC3\xBC"
                                                            "cher.example/a"));
    EXPECT_EQ(R"([{"allowed":true,"label":"","url":"http://bücher.example/a"}])", Find(kUser, Keys::kSites).text);
    EXPECT_EQ(1, reloads);
    EXPECT_EQ(nullptr, m_mainGui->Elevated());
    EXPECT_EQ(2u, OpenHandles());
}

TEST_F(MainGuiTest, AnAllowedUrlAsksAnewWhileAMyLinksUrlUsesWhatIsThere)
{
    StartMainGui();
    OpenSettings();
    const auto first = m_mainGui->Elevated();
    m_host.PageSets(Ids::kSaveMyLinksUrl, "a.example");
    EXPECT_EQ(first, m_mainGui->Elevated());
    m_host.PageSets(Ids::kSaveAllowedUrl, "b.example");
    EXPECT_NE(first, m_mainGui->Elevated());
    EXPECT_NE(nullptr, m_mainGui->Elevated()); // a page is open
    EXPECT_EQ(R"([{"allowed":true,"label":"","url":"a.example"},{"allowed":true,"label":"","url":"b.example"}])",
              Find(kUser, Keys::kSites).text);
}

TEST_F(MainGuiTest, TheHandlersEndReleasesTheElevatedSettings)
{
    StartMainGui();
    OpenSettings();
    m_mainGui.reset();
    EXPECT_EQ(2u, OpenHandles());
    EXPECT_THAT(LogCapture::Take(5), testing::IsSupersetOf({LogLine{5, "MainGuiHandler::~MainGuiHandler: "},
                                                            LogLine{5, "MainGuiHandler::UninitialiseAdminHandle: "}}));
}
