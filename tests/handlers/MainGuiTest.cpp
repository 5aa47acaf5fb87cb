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
        EXPECT_EQ(row.level, m_host.String(Ids::kStatusLevel));
        EXPECT_EQ(row.main, m_host.String(Ids::kMainStatus));
        EXPECT_EQ(row.sub, m_host.String(Ids::kSubStatus));
    }
}

TEST_F(MainGuiTest, SubStatusStaysWithoutTheUsersSettings)
{
    StartMainGui();
    m_host.PageSets(Ids::kSubStatus, "as before");
    m_user.reset();
    m_mainGui->LoadStatus();
    EXPECT_THAT(m_host.Take("set"), ElementsAre("status_level", "main_status"));
    EXPECT_EQ("as before", m_host.String(Ids::kSubStatus));
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

TEST_F(MainGuiTest, ALoadShowsWhatTheStoreBringsLateAndHasEveryPageLoadIt)
{
    Put(kSystem, Keys::kBrowsingProtection, false);
    Fail("OrbStrata_OpenHandle", nullptr, 31, 1);
    m_system = std::make_shared<SystemSettings>(nullptr, kSettingsClientId);
    StartMainGui();
    LogCapture::Take();
    EXPECT_EQ("Ok", m_host.String(Ids::kStatusLevel));
    m_host.PageFires(kLoadData);
    EXPECT_EQ("Off", m_host.String("@BrowsingProtection\\Data:browsing_protection_state"));
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
