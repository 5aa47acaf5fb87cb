#include "tests/handlers/MainGuiTest.h"

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(MainGuiTest, EachSwitchMoveWritesExactlyItsKeys)
{
    struct Row
    {
        const char *state, *status;
        std::vector<std::wstring> keys;
    };
    StartMainGui();
    OpenSettings();
    for (const Row& row : {Row{Ids::kWebFilter, Ids::kWebFilterStatus, {Keys::kContent}},
                           Row{Ids::kTimeLimit, Ids::kTimeLimitStatus, {Keys::kTime, Keys::kQuota}},
                           Row{Ids::kSafeSearch, Ids::kSafeSearchStatus, {Keys::kSearchFilter}}})
    {
        for (const bool on : {true, false})
        {
            m_host.PageSets(row.state, on ? "MoveOn" : "MoveOff");
            EXPECT_EQ(on ? "On" : "Off", m_host.Text(row.state));
            EXPECT_EQ(on ? "On" : "Off", m_host.Text(row.status));
            Settle();
            EXPECT_EQ(row.keys, WrittenKeys());
            for (const std::wstring& key : row.keys)
                EXPECT_EQ(on ? 1 : 0, Find(kUser, key.c_str()).number);
            EXPECT_EQ(on ? "On" : "Off", m_host.Text(row.state));
        }
    }
}

TEST_F(MainGuiTest, ASwitchMoveIsAnsweredBeforeTheStatusIsPublished)
{
    StartMainGui();
    OpenSettings();
    m_host.PageSets(Ids::kTimeLimit, "MoveOn");
    const auto set = m_host.Take("set");
    EXPECT_THAT(set, testing::SizeIs(testing::Ge(5u)));
    EXPECT_EQ("time_limit_state", set[0]);
    EXPECT_EQ("time_limit_status", set[1]);
    EXPECT_EQ("status_level", set[2]);
    Settle();
    EXPECT_EQ("WfOn", m_host.Text(Ids::kSubStatus));
}

TEST_F(MainGuiTest, ASettledSwitchValueChangesNothing)
{
    StartMainGui();
    OpenSettings();
    for (const char* value : {"On", "Off", "", "moveon"})
        m_host.PageSets(Ids::kWebFilter, value);
    EXPECT_THAT(WrittenKeys(), IsEmpty());
    EXPECT_THAT(m_host.Take("set"), testing::Not(testing::Contains("current_user_web_page_filter_status")));
}

TEST_F(MainGuiTest, AMoveWithoutElevatedSettingsIsNotAnswered)
{
    StartMainGui();
    m_host.PageSets(Ids::kWebFilter, "MoveOn");
    EXPECT_THAT(WrittenKeys(), IsEmpty());
    EXPECT_THAT(m_host.Take("set"), ElementsAre("status_level", "main_status", "sub_status"));
}

TEST_F(MainGuiTest, AMoveOfAnEnforcedSwitchIsAnsweredAndTakenBack)
{
    Put(kUser, Keys::kContent, false);
    Constrain(kUser, Keys::kContent, ORB_STRATA_CONSTRAINT_ENFORCED);
    StartMainGui();
    OpenSettings();
    m_host.PageSets(Ids::kWebFilter, "MoveOn");
    EXPECT_THAT(WrittenKeys(), IsEmpty());
    EXPECT_EQ("Off", m_host.Text(Ids::kWebFilter));
    EXPECT_EQ("Off", m_host.Text(Ids::kWebFilterStatus));
    const auto set = m_host.Take("set");
    EXPECT_EQ("current_user_web_page_filter_switch_state", set[0]);
    EXPECT_EQ("current_user_web_page_filter_status", set[1]);
}

TEST_F(MainGuiTest, AMoveThatCannotBeSavedIsTakenBackAndWrittenLater)
{
    StartMainGui();
    OpenSettings();
    Fail("OrbStrata_SetBool", Keys::kContent, 31, 1);
    LogCapture::Expect(1, "StrataSettings::Property<bool>::Save: 'common.content.enabled' saving failed, result 31");
    m_host.PageSets(Ids::kWebFilter, "MoveOn");
    EXPECT_EQ("Off", m_host.Text(Ids::kWebFilter));
    m_host.PageSets(Ids::kWebFilter, "MoveOn");
    EXPECT_EQ(1, Find(kUser, Keys::kContent).number);
    EXPECT_EQ("On", m_host.Text(Ids::kWebFilter));
}

TEST_F(MainGuiTest, ShowingSettingsRecordsAMetricAndReloads)
{
    StartMainGui();
    for (const char* id : {"@Veridan\\Settings\\Triggers:show_settings_ui", "@Veridan\\Settings\\Triggers:show_bp_page",
                           "@Veridan\\Settings\\Triggers:show_tl_page", "@Veridan\\Settings\\Triggers:show_wf_page",
                           "@Veridan\\Settings\\Triggers:show_bankingprotection_page",
                           "@Veridan\\Settings\\Triggers:show_safesearch_page",
                           "@Veridan\\Settings\\Triggers:show_browser_ext_page", "@Triggers\\Settings:security"})
    {
        const std::size_t before = MetricEvents().size();
        m_host.PageFires(id);
        EXPECT_EQ(before + 1, MetricEvents().size()) << id;
        EXPECT_EQ("settings_gui_opened", MetricEvents().back());
        EXPECT_THAT(m_host.Take("trigger"), ElementsAre("load_data")) << id;
    }
    EXPECT_EQ(nullptr, m_mainGui->AdminHandle());
}

TEST_F(MainGuiTest, TheMainWindowIsShownWithFreshData)
{
    StartMainGui();
    m_host.PageFires("@Triggers\\Windows:show_main_window");
    EXPECT_EQ(QVariant(true), m_host.Value(Ids::kVisible));
    const auto set = m_host.Take("set");
    const auto visible = std::find(set.begin(), set.end(), "visible");
    ASSERT_NE(set.end(), visible);
    EXPECT_EQ("sub_status", *(visible - 1)); // the page was hidden: user data and status come first
    EXPECT_EQ("browsing_protection_state", *(visible + 1));
    EXPECT_EQ(1, Find(kUser, Keys::kMainGuiOpen).number);

    m_host.PageFires("@Triggers\\Windows:show_main_window");
    EXPECT_EQ("visible", m_host.Take("set").front());
}
