#include "handlers/SafeBankingHandler.h"
#include "platform/Clipboard.h"
#include "platform/NamedEvents.h"
#include "tests/handlers/HandlerTest.h"
#include "tests/support/PlatformFakes.h"
#include "util/Handle.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr const wchar_t* kSessionOpen = L"windows.browsing_protection.internal.banking_session_open";
constexpr const wchar_t* kCloseEvent = L"windows.browsing_protection.internal.banking_close_event";
constexpr const wchar_t* kExpanded = L"windows.browsing_protection.internal.open_banking_flyer_expanded";
constexpr const wchar_t* kClearClipboard =
    L"windows.browsing_protection.banking_protection.clear_clipboard_after_banking_session";
constexpr const char* kGate = "@Product\\Customization:ClearClipboardAfterBanking";
constexpr const char* kCloseSession = "@SafeBanking\\Triggers:closeBankingSession";

class FakeClipboard : public FakeService<Platform::Clipboard>
{
public:
    bool Open() override
    {
        m_open = m_available;
        if (!m_available)
            Platform::SetLastError(5);
        return m_open;
    }
    void Empty() override { m_emptied += m_open ? 1 : 0; }
    void Close() override { m_open = false; }

    bool m_available = true;
    bool m_open = false;
    int m_emptied = 0;
};

class SafeBankingTest : public HandlerTest
{
protected:
    void Start()
    {
        m_system->Load();
        m_handler = std::make_unique<SafeBankingHandler>(m_system, m_user);
        ASSERT_TRUE(m_handler->Initialize(&m_host));
    }

    /// As Start(), after the page has echoed the initial state.
    void StartSettled()
    {
        Start();
        m_host.PageFires(kCloseSession);
        m_host.Forget();
    }

    void SwitchSession(bool open)
    {
        Put(kSystem, kSessionOpen, open);
        Settle();
    }

    FakeClipboard m_clipboard;
    std::unique_ptr<SafeBankingHandler> m_handler;
};

} // namespace

TEST_F(SafeBankingTest, StartsWithTheFlyerAsTheSessionIs)
{
    m_host.PageSets(kGate, true);
    Start();
    EXPECT_EQ(QVariant(true), m_host.Value("@SafeBanking\\Data:banking_feature_enable"));
    EXPECT_EQ(QVariant(false), m_host.Value("@SafeBanking\\Data:banking_feature_enable_readonly"));
    EXPECT_THAT(m_host.Take("trigger"), ElementsAre("flyerClose"));
    EXPECT_EQ(0, m_clipboard.m_emptied); // no session ended
    m_handler.reset();
    SwitchSession(true);
    Start();
    EXPECT_THAT(m_host.Take("trigger"), ElementsAre("flyerOpen", "flyerHide"));
    EXPECT_THAT(MetricEvents(), ElementsAre("safe_banking_flyer_activated"));
}

TEST_F(SafeBankingTest, PublishesItsOptions)
{
    Put(kSystem, L"windows.browsing_protection.banking_protection.allow_all_internet_connections", true);
    Put(kSystem, kClearClipboard, false);
    Put(kSystem, L"windows.browsing_protection.banking_protection.activated", false);
    Constrain(kSystem, L"windows.browsing_protection.banking_protection.activated", ORB_STRATA_CONSTRAINT_ENFORCED);
    Start();
    m_host.Forget();
    m_host.PageFires(kLoadData);
    EXPECT_EQ(QVariant(false), m_host.Value("@SafeBanking\\Data:banking_feature_enable"));
    EXPECT_EQ(QVariant(true), m_host.Value("@SafeBanking\\Data:banking_feature_enable_readonly"));
    EXPECT_EQ(QVariant(true), m_host.Value("@SafeBanking\\Data:no_connection_cut"));
    EXPECT_EQ(QVariant(false), m_host.Value("@SafeBanking\\Data:no_connection_cut_readonly"));
    EXPECT_EQ(QVariant(true), m_host.Value("@SafeBanking\\Data:no_clipboard_clear"));
}

TEST_F(SafeBankingTest, TheFirstCloseIsThePagesEchoAndCountsForNothing)
{
    Start();
    m_host.PageFires(kCloseSession);
    EXPECT_THAT(MetricEvents(), IsEmpty());
    EXPECT_THAT(LogCapture::Take(5), Contains(LogLine{5, "SafeBankingHandler::OnNotify: Initializing banking state, "
                                                         "not recording session close."}));
    m_host.PageFires(kCloseSession);
    EXPECT_THAT(MetricEvents(), ElementsAre("safe_banking_closed_from_browser"));
}

TEST_F(SafeBankingTest, AFlyerIsCollapsedOnceAndTheSettingCleared)
{
    StartSettled();
    SwitchSession(true);
    EXPECT_THAT(m_host.Take("trigger"), ElementsAre("flyerOpen", "flyerHide"));
    EXPECT_EQ(0, Find(kUser, kExpanded).number);
    EXPECT_THAT(WrittenKeys(), ElementsAre(kExpanded));
    SwitchSession(false);
    SwitchSession(true);
    EXPECT_THAT(m_host.Take("trigger"), ElementsAre("flyerClose", "flyerOpen"));
    EXPECT_EQ(2u, MetricEvents().size());
}

TEST_F(SafeBankingTest, AConstraintAloneNeitherOpensNorEndsASession)
{
    StartSettled();
    m_host.PageSets(kGate, true);
    for (const bool open : {true, false})
    {
        SwitchSession(open);
        m_host.Forget();
        m_clipboard.m_emptied = 0;
        Constrain(kSystem, kSessionOpen, open ? ORB_STRATA_CONSTRAINT_ENFORCED : 0);
        Settle();
        EXPECT_THAT(m_host.Take("trigger"), IsEmpty());
        EXPECT_EQ(0, m_clipboard.m_emptied);
    }
    Erase(kSystem, kSessionOpen); // no session, as before
    Settle();
    EXPECT_EQ(0, m_clipboard.m_emptied);
    EXPECT_EQ(1u, MetricEvents().size());
}

TEST_F(SafeBankingTest, ClosingTheFlyerSignalsTheService)
{
    const RAII::Handle event(Platform::Get<Platform::NamedEvents>().Create(L"Veridan test banking close"));
    ASSERT_TRUE(event.Get());
    Put(kSystem, kCloseEvent, Stored{ORB_STRATA_TYPE_STRING, 0, "Veridan test banking close", 0});
    StartSettled();
    SwitchSession(true);
    m_host.PageFires(kCloseSession);
    EXPECT_TRUE(Platform::Get<Platform::NamedEvents>().IsSet(event.Get()));
    EXPECT_THAT(MetricEvents(), ElementsAre("safe_banking_flyer_activated", "safe_banking_closed_from_flyer"));
}

TEST_F(SafeBankingTest, AMissingEventIsLoggedAndAnEmptyNameIsNone)
{
    StartSettled();
    SwitchSession(true);
    m_host.PageFires(kCloseSession);
    EXPECT_EQ("safe_banking_closed_from_flyer", MetricEvents().back());
    EXPECT_THAT(LogCapture::Take(2), IsEmpty());

    Put(kSystem, kCloseEvent, Stored{ORB_STRATA_TYPE_STRING, 0, "Veridan test no such event", 0});
    Settle();
    m_host.PageFires(kCloseSession);
    EXPECT_EQ(3u, MetricEvents().size());
    const auto log = LogCapture::Take(2);
    ASSERT_EQ(1u, log.size());
    EXPECT_THAT(log[0].text,
                testing::StartsWith("SafeBankingHandler::OnBankingFlyerClosed: Unable to open event, error "));
}

TEST_F(SafeBankingTest, TheClipboardIsClearedOnlyWhenBothSwitchesSaySo)
{
    StartSettled();
    for (const bool gate : {false, true})
    {
        for (const bool setting : {false, true})
        {
            m_host.PageSets(kGate, gate);
            Put(kSystem, kClearClipboard, setting);
            SwitchSession(true);
            m_clipboard.m_emptied = 0;
            SwitchSession(false);
            EXPECT_EQ(gate && setting ? 1 : 0, m_clipboard.m_emptied);
            EXPECT_FALSE(m_clipboard.m_open);
        }
    }
    EXPECT_THAT(LogCapture::Take(5), Contains(LogLine{5, "SafeBankingHandler::ClearClipboard: Clipboard cleaned."}));

    m_clipboard.m_available = false;
    LogCapture::Expect(2, "SafeBankingHandler::ClearClipboard: Cannot open clipboard, error 5.");
    SwitchSession(true);
    SwitchSession(false);
}

TEST_F(SafeBankingTest, TheDescriptionIsPreparedOnceInAProcess)
{
    StartSettled();
    m_host.PageSets("@SafeBanking\\Strings:description", "Your session is protected.");
    m_host.PageSets("@SafeBanking\\Customizable\\Strings:more_info_text", "More & more");
    m_host.PageSets("@SafeBanking\\Customizable\\Strings:more_info_url", "https://example.com/?a=1&b=\"2\"");
    SwitchSession(true);
    const std::string prepared = "Your session is protected. "
                                 "<a href=\"https://example.com/?a=1&amp;b=&quot;2&quot;\">More &amp; more</a>";
    EXPECT_EQ(prepared, m_host.Text("@SafeBanking\\Data:description"));
    m_host.PageSets("@SafeBanking\\Strings:description", "Another text");
    SwitchSession(false);
    SwitchSession(true);
    EXPECT_EQ(prepared, m_host.Text("@SafeBanking\\Data:description"));
}

TEST_F(SafeBankingTest, HiddenDetailsAreRecordedAndAFailureLogged)
{
    StartSettled();
    m_host.PageFires("@SafeBanking\\Triggers:hideFlyerDetails");
    EXPECT_THAT(MetricEvents(), ElementsAre("safe_banking_flyer_hidden"));
    FailMetrics(7, 1);
    LogCapture::Expect(2, "SafeBankingHandler::OnNotify: OrbDpApi_MetricsRecordEvent failed with error: 7");
    m_host.PageFires("@SafeBanking\\Triggers:hideFlyerDetails");
    m_host.PageFires(kSave);
}
