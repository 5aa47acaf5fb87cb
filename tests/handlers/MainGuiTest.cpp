#include "tests/handlers/MainGuiTest.h"

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

TEST_F(MainGuiTest, TellsTheLogOfItsStart)
{
    StartMainGui();
    EXPECT_THAT(LogCapture::Take(5),
                testing::IsSupersetOf({LogLine{5, "MainGuiHandler::Initialize: MainGuiHandler logon"},
                                       LogLine{5, "MainGuiHandler::Initialize: MainGuiHandler variables wired"},
                                       LogLine{5, "MainGuiHandler::Initialize: MainGuiHandler initialized"}}));
}

TEST_F(MainGuiTest, StatusFollowsProtectionFirstThenFilterOrTimeLimit)
{
    struct Row
    {
        bool browsing, content, time;
        const char *level, *main, *sub;
    };
    for (const Row& row :
         {Row{true, false, false, "Ok", "UsersProtected", "WfOff"},
          Row{true, true, false, "Ok", "UsersProtected", "WfOn"},
          Row{true, false, true, "Ok", "UsersProtected", "WfOn"}, Row{true, true, true, "Ok", "UsersProtected", "WfOn"},
          Row{false, false, false, "Error", "UsersNotProtected", "BpOff"},
          Row{false, true, true, "Error", "UsersNotProtected", "BpOff"}})
    {
        m_mainGui.reset();
        Put(kSystem, Keys::kBrowsingProtection, row.browsing);
        Put(kUser, Keys::kContent, row.content);
        Put(kUser, Keys::kTime, row.time);
        Settle();
        StartMainGui();
        EXPECT_EQ(row.level, m_host.Text(Ids::kStatusLevel));
        EXPECT_EQ(row.main, m_host.Text(Ids::kMainStatus));
        EXPECT_EQ(row.sub, m_host.Text(Ids::kSubStatus));
    }
}

TEST_F(MainGuiTest, SubStatusStaysWithoutTheUsersSettings)
{
    StartMainGui();
    m_host.PageSets(Ids::kSubStatus, "as before");
    m_user.reset();
    m_mainGui->LoadStatus();
    EXPECT_THAT(m_host.Take("set"), ElementsAre("status_level", "main_status"));
    EXPECT_EQ("as before", m_host.Text(Ids::kSubStatus));
}

TEST_F(MainGuiTest, WithoutADataPeerStatusSaysSo)
{
    m_mainGui = std::make_shared<MainGuiHandler>(m_system, m_user);
    LogCapture::Expect(1, "MainGuiHandler::LoadStatus: systemSettings=1, m_dataPeer=0");
    LogCapture::Expect(1, "MainGuiHandler::LoadStatus: systemSettings=1, m_dataPeer=0");
    m_mainGui->LoadStatus();
    m_mainGui->LoadSystemWideData();
    m_mainGui->LoadUserData();
    m_mainGui->OnUserInfoChanged();
    m_mainGui->BrowsingProtectionSTRATAChanged(L"");
}

TEST_F(MainGuiTest, ReadOnlyFlagsAreTheSwitchesOwn)
{
    Put(kSystem, Keys::kBankingProtection, false);
    Constrain(kSystem, Keys::kBankingProtection, ORB_STRATA_CONSTRAINT_ENFORCED);
    StartMainGui();
    EXPECT_EQ("Off", m_host.Text("@SafeBanking\\Data:banking_protection_state"));
    EXPECT_EQ("Off", m_host.Text("@SafeBanking\\Data:banking_protection_status"));
    EXPECT_EQ(QVariant(true), m_host.Value("@SafeBanking\\Data:banking_protection_state_readonly"));
    EXPECT_EQ(QVariant(false), m_host.Value("@BrowsingProtection\\Data:browsing_protection_state_readonly"));
}

TEST_F(MainGuiTest, APageThatIsOpenFollowsEachSettingThatItShows)
{
    struct Row
    {
        const char* sid;
        const wchar_t* key;
        bool value;
        const char *id, *text;
    };
    StartMainGui();
    for (const Row& row :
         {Row{kUser, Keys::kTime, true, Ids::kTimeLimitStatus, "On"},
          Row{kUser, Keys::kContent, true, Ids::kWebFilterStatus, "On"},
          Row{kUser, Keys::kSearchFilter, true, Ids::kSafeSearchStatus, "On"},
          Row{kSystem, Keys::kDigiParenting, true, Ids::kSafeSearchStatus, "Off"}, // selects the other switch
          Row{kUser, Keys::kSafeSearch, true, Ids::kSafeSearchStatus, "On"},
          Row{kSystem, Keys::kBankingProtection, false, "@SafeBanking\\Data:banking_protection_state", "Off"},
          Row{kSystem, Keys::kBrowsingProtection, false, Ids::kStatusLevel, "Error"}})
    {
        EXPECT_NE(row.text, m_host.Text(row.id));
        Put(row.sid, row.key, row.value);
        Settle();
        EXPECT_EQ(row.text, m_host.Text(row.id)) << row.id;
    }
    Put(kUser, Keys::kBrowserType, 3);
    Settle();
    EXPECT_EQ(QVariant(3), m_host.Value("@ContentControl\\Status:default_browser_type"));
    EXPECT_THAT(m_host.Take("trigger"), IsEmpty()); // an edit in progress is not reloaded
}

TEST_F(MainGuiTest, ALoadShowsWhatTheStoreBringsLateAndHasEveryPageLoadIt)
{
    Put(kSystem, Keys::kBrowsingProtection, false);
    Fail("OrbStrata_OpenHandle", nullptr, 31, 1);
    m_system = std::make_shared<SystemSettings>(nullptr, kSettingsClientId);
    StartMainGui();
    LogCapture::Take();
    EXPECT_EQ("Ok", m_host.Text(Ids::kStatusLevel));
    m_host.PageFires(kLoadData);
    EXPECT_EQ("Off", m_host.Text("@BrowsingProtection\\Data:browsing_protection_state"));
    EXPECT_THAT(m_host.Take("trigger"), ElementsAre("load_data"));
}

TEST_F(MainGuiTest, AChangedBrowserExtensionReloadsEveryPage)
{
    StartMainGui();
    Put(kUser, Keys::kExtensionDisabled, true);
    Settle();
    EXPECT_EQ(QVariant(true), m_host.Value("@ContentControl\\Status:browser_extension_disabled"));
    EXPECT_THAT(m_host.Take("trigger"), ElementsAre("load_data"));
}

TEST_F(MainGuiTest, VisibilityIsKeptInTheUsersSettings)
{
    StartMainGui();
    m_host.PageSets(Ids::kVisible, true);
    EXPECT_THAT(WrittenKeys(), ElementsAre(Keys::kMainGuiOpen));
    EXPECT_EQ(1, Find(kUser, Keys::kMainGuiOpen).number);
    m_host.PageSets(Ids::kVisible, false);
    EXPECT_EQ(0, Find(kUser, Keys::kMainGuiOpen).number);
}

TEST_F(MainGuiTest, LocalisationUserAndBrowserChangesRepublishTheirPart)
{
    StartMainGui();
    m_host.PageFires("@Localization\\MetaData\\Localization:updated");
    EXPECT_THAT(m_host.Take("set"), ElementsAre("status_level", "main_status", "sub_status"));
    m_mainGui->OnBrowserRepositoryChanged();
    EXPECT_EQ(8u, SetsBesideStatus().size());
    m_mainGui->OnUserInfoChanged();
    EXPECT_EQ("sub_status", m_host.Take("set").back());
}

TEST_F(MainGuiTest, TheSaveTriggerIsHandedOnAndWritesNothing)
{
    StartMainGui();
    int saves = 0;
    QObject::connect(m_mainGui.get(), &MainGuiHandler::Save, [&] { ++saves; });
    m_host.PageFires("@Veridan\\Settings\\Triggers:save");
    EXPECT_EQ(1, saves);
    EXPECT_THAT(WrittenKeys(), IsEmpty());
}

TEST_F(MainGuiTest, TheSettingsSaveIsAnsweredInOrder)
{
    StartMainGui();
    m_host.PageFires("@VDNSettings:save");
    EXPECT_EQ(QVariant(0), m_host.Value("@VDNSettings:saveResult"));
    EXPECT_EQ("VDNSettingsMultiPageHost", m_host.Text("@VDNSettings:saveResultReceiver"));
    EXPECT_THAT(m_host.Take("set"), ElementsAre("saveResult", "saveResultReceiver"));
    m_host.PageFires("@VDNSettings:save");
    EXPECT_THAT(m_host.Take("trigger"), ElementsAre("saveResultNotifier"));
    EXPECT_THAT(WrittenKeys(), IsEmpty());
}
