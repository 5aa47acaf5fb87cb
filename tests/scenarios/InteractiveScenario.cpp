// The host as a person has it, over plain pipes.

#include "tests/scenarios/HostProcess.h"
#include "tests/support/ChildProcess.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

namespace
{

/// The host without --jsonl.
class InteractiveHost
{
public:
    explicit InteractiveHost(const QStringList& options, ChildProcess::Console console = ChildProcess::Console::None)
        : m_process(console)
    {
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_process.start(HostProcess::Program(), options);
    }

    ~InteractiveHost()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    void Type(const QByteArray& line) { m_process.write(line + '\n'); }

    /// Whether the text comes, after what was awaited before.
    bool Shows(const QByteArray& text)
    {
        int found = -1;
        while ((found = m_output.indexOf(text, m_read)) < 0)
        {
            if (!m_process.waitForReadyRead(kDeadlineMs))
                return false;
            m_output += m_process.readAll();
        }
        m_read = found + text.size();
        return true;
    }

    int Finish()
    {
        m_process.closeWriteChannel();
        return AwaitEnd();
    }

    int AwaitEnd()
    {
        const bool ended = m_process.state() == QProcess::NotRunning || m_process.waitForFinished(kDeadlineMs);
        m_output += m_process.readAll();
        return ended && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }

    bool Terminate() { return m_process.RequestEnd(); }
    const QByteArray& Output() const { return m_output; }

private:
    ChildProcess m_process;
    QByteArray m_output;
    int m_read = 0;
};

TEST(InteractiveScenario, PageIsShownAndFollowsWhatIsTyped)
{
    InteractiveHost host({"--temporary"});
    EXPECT_TRUE(host.Shows("Users are protected"));
    EXPECT_TRUE(host.Shows("Safe search                   Off"));
    host.Type("set web_filter on");
    EXPECT_TRUE(host.Shows("MoveOn"));
    EXPECT_TRUE(host.Shows("Sub status"));
    host.Type("store set --scope system windows.browsing_protection.enabled false");
    EXPECT_TRUE(host.Shows("Stored"));
    host.Type("page");
    EXPECT_TRUE(host.Shows("Users are not protected"));
    EXPECT_TRUE(host.Shows("Web page filter               On"));
    host.Type("store get --scope system windows.browsing_protection.enabled");
    EXPECT_TRUE(host.Shows("= false  (bool, scope system)"));
    host.Type("get sub_status");
    EXPECT_TRUE(host.Shows("sub_status = BpOff"));
    host.Type("quit");
    EXPECT_EQ(host.AwaitEnd(), 0);
    EXPECT_FALSE(host.Output().contains('\x1b')) << "a pipe gets no colours and no prompt";
    EXPECT_FALSE(host.Output().contains("veridan>"));
}

TEST(InteractiveScenario, MistypedCommandsAreExplainedAndChangeNothing)
{
    InteractiveHost host({"--temporary"});
    for (const char* line :
         {"nonsense", "set", "set web_filter", "get no_such_variable", "get", "store", "store get", "store set a.key",
          "store get --scope everybody a.key", "trigger", "variables @Nothing", "set browsing_protection off"})
        host.Type(line);
    host.Type("store set windows.browsing_protection.internal.default_browser_type true");
    host.Type("store set windows.browsing_protection.internal.default_browser_type 5");
    host.Type("store set windows.browsing_protection.internal.default_browser_type text");
    host.Type("get default_browser_type");
    EXPECT_EQ(host.Finish(), 0);
    EXPECT_TRUE(host.Output().contains("There is no command \"nonsense\""));
    EXPECT_TRUE(host.Output().contains("There is no variable \"no_such_variable\""));
    EXPECT_TRUE(host.Output().contains("must be true or false"));
}

TEST(InteractiveScenario, EndOfInputEndsItAfterTheLastCommand)
{
    InteractiveHost host({"--temporary"});
    host.Type("\n  \nset @A:b {\"n\":[1,true]}\nget @A:b");
    EXPECT_EQ(host.Finish(), 0);
    EXPECT_TRUE(host.Output().contains("@A:b = {\"n\":[1,true]}"));
}

TEST(InteractiveScenario, TerminationSignalEndsItCleanly)
{
    QTemporaryDir folder;
    InteractiveHost host({"--data", folder.path()}, ChildProcess::Console::Own);
    EXPECT_TRUE(host.Shows("lists the commands"));
    ASSERT_TRUE(host.Terminate());
    EXPECT_EQ(host.AwaitEnd(), 0);
    QFile log(folder.filePath("log-root/Norlane/Log/NLCC/Veridan.log"));
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_TRUE(
        QString::fromUtf16(reinterpret_cast<const ushort*>(log.readAll().constData())).contains("LOGGING ENDED"));
}

TEST(InteractiveScenario, WhatKeepsItFromStartingIsSaidWithAnExitCode)
{
    QTemporaryDir folder;
    QFile file(folder.filePath("store.db"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(20000, 'g'));
    file.close();
    struct Case
    {
        QStringList options;
        int exitCode;
        const char* says;
    };
    const Case cases[] = {{{"--data", folder.path()}, 1, "store.db"},
                          {{"--data", folder.filePath("store.db/below")}, 1, "cannot be created"},
                          {{"--temporary", "--library", "/nowhere/x.so"}, 1, "/nowhere/x.so"},
                          {{"--temporary", "--data", folder.path()}, 2, "exclude"},
                          {{"--unheard-of"}, 1, "unheard-of"},
                          {{"--help"}, 0, "--temporary"},
                          {{"--version"}, 0, "veridan-host"}};
    for (const Case& one : cases)
    {
        InteractiveHost host(one.options);
        EXPECT_EQ(host.AwaitEnd(), one.exitCode) << one.says;
        EXPECT_TRUE(host.Output().contains(one.says)) << one.says << " not in " << host.Output().constData();
    }
}

TEST(InteractiveScenario, WhatAnEarlierRunHasLoggedIsNotTheReasonOfAFailedStart)
{
    QTemporaryDir folder;
    QDir(folder.path()).mkpath("log-root/Norlane/Log/NLCC");
    QFile log(folder.filePath("log-root/Norlane/Log/NLCC/Veridan.log"));
    ASSERT_TRUE(log.open(QIODevice::WriteOnly));
    const std::u16string line = u"2020-01-01 00:00:00.000 [1.1] *E: Earlier\r\n";
    log.write(reinterpret_cast<const char*>(line.data()), static_cast<qint64>(line.size()) * qint64{sizeof line[0]});
    log.close();
    InteractiveHost host({"--data", folder.path(), "--library", "/nowhere/x.so"});
    EXPECT_EQ(host.AwaitEnd(), 1);
    EXPECT_TRUE(host.Output().contains("/nowhere/x.so"));
    EXPECT_FALSE(host.Output().contains("Earlier"));
}

TEST(InteractiveScenario, TemporaryFolderIsGoneAfterwards)
{
    InteractiveHost host({"--temporary"});
    EXPECT_TRUE(host.Shows("Data in "));
    EXPECT_TRUE(host.Shows(";"));
    const QByteArray output = host.Output();
    const int start = output.indexOf("Data in ") + 8;
    const QString folder = QString::fromLocal8Bit(output.mid(start, output.indexOf(';', start) - start));
    EXPECT_TRUE(QDir(folder).exists()) << qUtf8Printable(folder);
    EXPECT_EQ(host.Finish(), 0);
    EXPECT_FALSE(QDir(folder).exists());
}

} // namespace
