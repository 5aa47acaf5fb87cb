#include "tests/logging/LogFixture.h"

#include "logging/FileAccess.h"
#include "tests/support/ChildProcess.h"

#include <QCoreApplication>
#include <QDir>

#include <cwchar>
#include <map>
#include <memory>

namespace
{

using NlOrbLogging::FileAccess;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

constexpr int kDeadline = 120000;

class Processes : public LogFixture
{
protected:
    std::unique_ptr<ChildProcess> Start(const QStringList& arguments)
    {
        auto process = std::make_unique<ChildProcess>();
        process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process->start(QCoreApplication::applicationDirPath() + QStringLiteral("/log_writer"), arguments);
        EXPECT_TRUE(process->waitForStarted());
        return process;
    }

    QStringList Arguments(const char* mode, int maximumKB, int count, int threads, int lines, int id) const
    {
        QStringList arguments{QString::fromLatin1(mode), QDir::toNativeSeparators(m_folder.path())};
        for (const int number : {maximumKB, count, threads, lines, id})
            arguments += QString::number(number);
        return arguments;
    }

    /// The lines of all files, the oldest first.
    std::vector<std::wstring> AllMessages() const
    {
        std::vector<std::wstring> all;
        for (int number = 99; number >= 0; --number)
        {
            const std::wstring name = FileAccess::NumberedName(L"Veridan.log", static_cast<std::uint32_t>(number));
            const std::vector<std::wstring> messages = Messages(name);
            all.insert(all.end(), messages.begin(), messages.end());
        }
        return all;
    }
};

TEST_F(Processes, ShareAFileWithoutLosingSplittingOrReorderingALine)
{
    constexpr int kProcesses = 8;
    constexpr int kThreads = 4;
    constexpr int kLines = 50000 / (kProcesses * kThreads) + 1;
    constexpr int kMaximumKB = 64;
    std::vector<std::unique_ptr<ChildProcess>> processes;
    for (int id = 0; id < kProcesses; ++id)
    {
        // Just enough files to hold all lines: a rotation too many would lose some.
        processes.push_back(Start(Arguments("lines", kMaximumKB, 99, kThreads, kLines, id)));
    }
    std::size_t lost = 0; // to the mutex, on a machine that is busy with other things
    for (const auto& process : processes)
    {
        ASSERT_TRUE(process->waitForFinished(kDeadline));
        EXPECT_EQ(process->exitCode(), 0);
        lost += process->readAllStandardOutput().trimmed().toUInt();
    }

    std::map<std::pair<int, int>, int> next;
    std::size_t count = 0;
    for (const std::wstring& message : AllMessages())
    {
        int process = -1;
        int thread = -1;
        int number = -1;
        wchar_t rest[16] = L"";
        ASSERT_EQ(std::swscanf(message.c_str(), L"W: %d.%d.%d %15l[a-z]", &process, &thread, &number, rest), 4)
            << QString::fromStdWString(message).toStdString();
        ASSERT_STREQ(rest, L"end");
        int& expected = next[{process, thread}];
        ASSERT_GE(number, expected);
        expected = number + 1;
        ++count;
    }
    constexpr std::size_t kAll = std::size_t{kLines} * kProcesses * kThreads;
    EXPECT_EQ(count + lost, kAll);
    EXPECT_LT(lost, kAll / 10);

    // A file is left behind once it is over the limit: each rotation happened once.
    const std::vector<std::wstring> names = FileNames();
    for (const std::wstring& name : names)
    {
        const qint64 size = QFile(QString::fromStdWString(FilePath(name))).size();
        EXPECT_LE(size, kMaximumKB * 1024 + 200);
        EXPECT_TRUE(name == L"Veridan.log" || size > kMaximumKB * 1024) << size;
    }
}

TEST_F(Processes, KillsAtAnyMomentLeaveWholeLinesAndAWorkingLog)
{
    Initialize(NlOrbLogging::BannerAtDebug);
    for (int round = 0; round < 20; ++round)
    {
        const auto writer = Start(Arguments("forever", 100, 99, 4, 0, round));
        ASSERT_TRUE(writer->waitForReadyRead(kDeadline));
        for (int i = 0; i < 10 * round; ++i)
            m_logger->Log(4, L"W: between");
        writer->kill();
        ASSERT_TRUE(writer->waitForFinished(kDeadline));
    }
    m_logger->Log(4, L"W: last");
    const std::vector<std::wstring> messages = AllMessages();
    EXPECT_EQ(messages.back(), L"W: last");
    for (const std::wstring& message : messages)
        EXPECT_EQ(message.rfind(L"W: ", 0), 0U) << QString::fromStdWString(message).toStdString();
    EXPECT_THAT(m_debugOutput.Take(), IsEmpty());
}

TEST_F(Processes, LoggingWhileTheProcessEndsDoesNoHarm)
{
    for (int round = 0; round < 20; ++round)
    {
        const auto process = Start({QStringLiteral("exit"), QDir::toNativeSeparators(m_folder.path())});
        ASSERT_TRUE(process->waitForFinished(kDeadline));
        ASSERT_EQ(process->exitStatus(), QProcess::NormalExit);
        ASSERT_EQ(process->exitCode(), 7);
    }
    const std::vector<std::wstring> messages = AllMessages();
    EXPECT_THAT(messages, Contains(StartsWith(L"W: ")));
    EXPECT_THAT(messages, Contains(L"***  LOGGING ENDED  ***"));
}

} // namespace
