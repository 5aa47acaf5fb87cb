#include "handlers/SafeBankingHandler.h"
#include "platform/Clipboard.h"
#include "tests/handlers/HandlerTest.h"
#include "tests/support/PlatformFakes.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr const wchar_t* kSessionOpen = L"windows.browsing_protection.internal.banking_session_open";
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
