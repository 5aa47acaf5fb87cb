#include "tests/logging/LogFixture.h"

#include "logging/Log.h"
#include "platform/LastError.h"
#include "tests/support/LogCapture.h"

#include <QFile>

#include <array>
#include <string>

namespace
{

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

constexpr std::size_t kLongest = 131071;

class Logger : public LogFixture
{};

TEST_F(Logger, ASessionBeginsWithAnEmptyLineAndEndsWithABanner)
{
    Initialize();
    m_logger->Log(2, L"%s: went %hs", L"A::B", "wrong");
    m_logger->Shutdown();

    const std::vector<std::wstring> lines = Lines(Read(FilePath()));
    ASSERT_THAT(lines, SizeIs(4));
    EXPECT_EQ(lines[0], L"");
    EXPECT_THAT(lines[1], StartsWith(L"2024-03-05 04:07:09.012 ["));
    EXPECT_THAT(lines[1], EndsWith(L"]  I: ***  LOGGING STARTED  *** (UTC+2:00, session: 0x1)"));
    EXPECT_THAT(lines[2], EndsWith(L"] *E: A::B: went wrong"));
    EXPECT_THAT(lines[3], EndsWith(L"]  I: ***  LOGGING ENDED  ***"));
}

TEST_F(Logger, TagsSayTheLevel)
{
    m_registry.Set(FakeRegistry::Root::Machine, kKey, L"LogLevel", 100);
    Initialize();
    for (const int level : {1, 2, 3, 4, 5, 6, 7, 0, -5})
        m_logger->Log(level, L"x");
    std::wstring tags;
    for (const std::wstring& line : Lines(Read(FilePath())))
        tags += line.empty() ? L"" : line.substr(line.find(L"] ") + 2, 3);
    EXPECT_EQ(tags, L" I:*F:*E:.W: I: D: V:  :  :  :");
}

TEST_F(Logger, WritesLinesUpToTheThresholdAndFormatsNoOthers)
{
    Initialize();
    EXPECT_TRUE(m_logger->IsEnabled(4));
    EXPECT_FALSE(m_logger->IsEnabled(5));
    m_logger->Log(4, L"shown");
    m_logger->Log(5, L"%s", reinterpret_cast<const wchar_t*>(1)); // reading the argument would crash
    m_logger->LogA(6, "%s", reinterpret_cast<const char*>(1));
    EXPECT_THAT(Messages(), ElementsAre(L"", StartsWith(L"***"), L"shown"));
}

TEST_F(Logger, TheSystemsZoneIsInTheBannerAsItStands)
{
    const auto banner = [this](bool hasZone, int offset, unsigned flags) {
        m_clock.m_hasZone = hasZone;
        m_clock.SetOffset(offset);
        Initialize(flags);
        m_logger->Shutdown();
        const std::wstring text = Messages()[1];
        EXPECT_TRUE(QFile::remove(QString::fromStdWString(FilePath())));
        return text.substr(text.find(L'('));
    };
    EXPECT_EQ(banner(true, 330, 0), L"(UTC+5:30, session: 0x1)");
    EXPECT_EQ(banner(true, -210, 0), L"(UTC-3:-30, session: 0x1)");
    EXPECT_EQ(banner(true, 0, 0), L"(UTC+0:00, session: 0x1)");
    EXPECT_EQ(banner(false, 0, 0), L"(UTC+59:59, session: 0x1)");
    EXPECT_EQ(banner(true, -30, NlOrbLogging::UtcTimestamps), L"(UTC+00:00, local:+0:-30, session: 0x1)");
    m_sessions.processSession = Platform::Sessions::kInvalid;
    EXPECT_EQ(banner(true, 60, 0), L"(UTC+1:00, session: 0xdeadbeef)");
}

TEST_F(Logger, FlagsChooseTheTimeAndTheBannersLevel)
{
    Initialize(NlOrbLogging::UtcTimestamps | NlOrbLogging::BannerAtDebug);
    m_logger->Log(4, L"x");
    m_logger->Shutdown();
    const std::vector<std::wstring> lines = Lines(Read(FilePath()));
    ASSERT_THAT(lines, SizeIs(1));
    EXPECT_THAT(lines[0], StartsWith(L"2024-03-05 02:07:09.012 ["));
}

TEST_F(Logger, TheNearestKeyOfTheRegistryWinsAndAllOnesCountAsAbsent)
{
    const auto threshold = [this] {
        Initialize();
        int level = 0;
        while (m_logger->IsEnabled(level + 1))
            ++level;
        m_logger->Shutdown();
        return level;
    };
    constexpr auto kMachine = FakeRegistry::Root::Machine;
    const std::wstring componentKey = std::wstring(kKey) + L"\\NLCC";
    EXPECT_EQ(threshold(), 4);
    m_registry.Set(kMachine, kKey, L"LogLevel", 1);
    EXPECT_EQ(threshold(), 1);
    m_registry.Set(kMachine, componentKey, L"LogLevel", 2);
    EXPECT_EQ(threshold(), 2);
    m_registry.Set(kMachine, kModuleKey, L"LogLevel", 3);
    EXPECT_EQ(threshold(), 3);
    m_registry.Set(kMachine, kModuleKey, L"LogLevel", 0xFFFFFFFF);
    EXPECT_EQ(threshold(), 2);
    m_registry.Set(FakeRegistry::Root::User, kModuleKey, L"LogLevel", 6);
    EXPECT_EQ(threshold(), 2);
}

TEST_F(Logger, ADeferredStartHappensWithTheFirstLineWhateverItsLevel)
{
    m_registry.Set(FakeRegistry::Root::Machine, kKey, L"LogLevel", 3);
    Initialize(NlOrbLogging::DeferredInit);
    EXPECT_TRUE(m_logger->IsEnabled(6));
    EXPECT_THAT(FileNames(), IsEmpty());

    m_logger->Log(6, L"filtered, but starts the session");
    EXPECT_FALSE(m_logger->IsEnabled(4));
    m_logger->Log(3, L"written");
    EXPECT_THAT(Messages(), ElementsAre(L"written"));
}

TEST_F(Logger, OnlyTheFirstInitializeCountsUntilTheShutdown)
{
    Initialize();
    m_logger->Initialize(L"Other", L"Module", 6, NlOrbLogging::UtcTimestamps);
    EXPECT_FALSE(m_logger->IsEnabled(5));
    m_logger->Log(4, L"first");
    m_logger->Shutdown();
    m_logger->Log(1, L"between");
    Initialize();
    m_logger->Log(4, L"second");

    EXPECT_THAT(Messages(), ElementsAre(L"", StartsWith(L"***"), L"first", L"***  LOGGING ENDED  ***", L"",
                                        StartsWith(L"***"), L"second"));
}

TEST_F(Logger, NarrowNamesFormatsAndTextsGoTheSameWay)
{
    m_logger->InitializeA("NLCC", "Veridan", 4, 0);
    m_logger->LogA(4, "%s %ls %d", "narrow", L"wide", 7);
    EXPECT_EQ(Messages().back(), L"narrow wide 7");
}

TEST_F(Logger, TheLongestMessageIsWrittenWholeAndALongerOneGivesItsFormat)
{
    SetLimits(4096, 0);
    Initialize();
    for (const std::size_t length : {std::size_t{2047}, std::size_t{2048}, kLongest})
    {
        const std::wstring message(length, L'w');
        m_logger->Log(4, L"%s", message.c_str());
        EXPECT_EQ(Messages().back().size(), length);
        m_logger->LogA(4, "%s", std::string(length, 'n').c_str());
        EXPECT_EQ(Messages().back(), std::wstring(length, L'n'));
    }
    m_logger->Log(4, L"%s.", std::wstring(kLongest, L'w').c_str());
    EXPECT_EQ(Messages().back(), L"NL_ORB_LOG failure: too large message. Format: %s.");
    m_logger->LogA(4, "%s-", std::string(kLongest, 'n').c_str());
    EXPECT_EQ(Messages().back(), L"NL_ORB_LOG failure: too large message. Format: %s-");

    const std::wstring format(2 * kLongest, L'f');
    m_logger->Log(4, format.c_str());
    EXPECT_EQ(Messages().back(),
              L"NL_ORB_LOG failure: too large message. Format: NL_ORB_LOG failure: too large message. Format: %s");
}

TEST_F(Logger, EveryLineGoesToTheDebuggerWhenTheRegistrySaysSo)
{
    m_registry.Set(FakeRegistry::Root::Machine, kModuleKey, L"DebugOutputLogging", 1);
    Initialize();
    m_logger->Log(4, L"x");
    const std::vector<std::wstring> texts = m_debugOutput.Take();
    ASSERT_THAT(texts, SizeIs(3));
    EXPECT_EQ(texts[0], L"\r\n");
    EXPECT_THAT(texts[2], EndsWith(L"]  I: x\r\n"));
    m_logger->Shutdown();
    m_debugOutput.Take();
    m_logger->Log(0, L"after the end");
    EXPECT_THAT(m_debugOutput.Take(), IsEmpty());
}

TEST_F(Logger, LeavesTheLastErrorAlone)
{
    const auto keeps = [](auto&& operation) {
        Platform::SetLastError(33);
        operation();
        return Platform::LastError() == 33;
    };
    m_registry.Set(FakeRegistry::Root::Machine, kKey, L"LogRotateCount", 1);
    m_registry.Set(FakeRegistry::Root::Machine, kKey, L"LogMaxSizeKB", 0);
    EXPECT_TRUE(keeps([&] { m_logger->InitializeA("NLCC", "Veridan", 4, 0); }));
    EXPECT_TRUE(keeps([&] { m_logger->Log(4, L"%s", L"rotates"); }));
    EXPECT_TRUE(keeps([&] { m_logger->LogA(4, "%hs", "\xFF"); }));
    EXPECT_TRUE(keeps([&] { m_logger->Flush(); }));
    EXPECT_TRUE(keeps([&] { m_logger->Shutdown(); }));
}

TEST_F(Logger, OfTheProcessEndsItsSessionWhenItIsReplaced)
{
    NlOrbLogging::ReplaceLogger(nullptr);
    NlOrbLogging::Initialize(L"NLCC", L"Veridan", 4, 0);
    LogCapture::Install();
    EXPECT_THAT(Messages(), ElementsAre(L"", StartsWith(L"***"), L"***  LOGGING ENDED  ***"));
}

TEST(GetLogger, AReplacementTakesOverAndGoesWithTheNext)
{
    struct Counted : NlOrbLogging::LoggerWin
    {
        explicit Counted(int& alive) : m_alive(alive) { ++m_alive; }
        ~Counted() override { --m_alive; }
        int& m_alive;
    };
    int alive = 0;
    NlOrbLogging::ReplaceLogger(std::make_unique<Counted>(alive));
    EXPECT_EQ(alive, 1);
    NlOrbLogging::ReplaceLogger(std::make_unique<Counted>(alive));
    EXPECT_EQ(alive, 1);
    NlOrbLogging::ReplaceLogger(nullptr);
    EXPECT_EQ(alive, 0);
    EXPECT_FALSE(NlOrbLogging::IsEnabled(1));
    LogCapture::Install();
    EXPECT_TRUE(NlOrbLogging::IsEnabled(6));
}

} // namespace
