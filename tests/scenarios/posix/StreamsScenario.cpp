// The host's standard streams and its terminal, as only this system has them.

#include "tests/scenarios/HostProcess.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <array>
#include <csignal>

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace
{

/// The host as a child of this process, on streams that the test made.
class RawHost
{
public:
    RawHost() = default;
    ~RawHost()
    {
        if (m_child > 0)
            kill(m_child, SIGKILL), waitpid(m_child, nullptr, 0);
    }
    RawHost(const RawHost&) = delete;
    RawHost& operator=(const RawHost&) = delete;

    /// Starts it in the child, where `streams` has been called.
    template <class Streams>
    void Start(const QList<QByteArray>& options, Streams&& streams, const char* name = "veridan-host")
    {
        const QByteArray program = QFileInfo(HostProcess::Program()).dir().filePath(name).toLocal8Bit();
        std::vector<QByteArray> words{program, "--data", m_folder.path().toLocal8Bit()};
        words.insert(words.end(), options.begin(), options.end());
        std::vector<char*> arguments;
        for (QByteArray& word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        m_child = fork();
        if (m_child == 0)
        {
            streams();
            execv(program.constData(), arguments.data());
            _exit(127);
        }
    }

    /// Runs the store's command line on the same data.
    void Beside(const QStringList& words) const
    {
        const QString program = QFileInfo(HostProcess::Program()).dir().filePath("strata");
        EXPECT_EQ(QProcess::execute(program, QStringList{"--data", m_folder.path()} + words), 0);
    }

    void Signal(int number) const { kill(m_child, number); }

    /// The exit code; -1 when it was killed or does not end.
    int AwaitEnd()
    {
        int status = 0;
        const bool ended = Await([&] { return waitpid(m_child, &status, WNOHANG) == m_child; });
        if (!ended)
            return -1;
        m_child = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    template <class Condition>
    static bool Await(Condition&& condition)
    {
        QElapsedTimer timer;
        timer.start();
        while (!condition())
        {
            if (timer.elapsed() > kDeadlineMs)
                return false;
            poll(nullptr, 0, 5);
        }
        return true;
    }

private:
    QTemporaryDir m_folder;
    pid_t m_child = 0;
};

struct Pipe
{
    Pipe() { EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0); }
    ~Pipe() { CloseReader(), CloseWriter(); }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    void CloseReader() { close(std::exchange(ends[0], -1)); }
    void CloseWriter() { close(std::exchange(ends[1], -1)); }
    int Filled() const
    {
        int bytes = 0;
        ioctl(ends[0], FIONREAD, &bytes);
        return bytes;
    }
    std::array<int, 2> ends{-1, -1};
};

void Send(int stream, const QByteArray& bytes)
{
    ASSERT_EQ(write(stream, bytes.constData(), static_cast<std::size_t>(bytes.size())), bytes.size());
}

QByteArray ReadAll(int stream)
{
    QByteArray all;
    std::array<char, 65536> piece{};
    for (ssize_t count = 1; count > 0;)
    {
        count = read(stream, piece.data(), piece.size());
        all.append(piece.data(), static_cast<int>(std::max<ssize_t>(count, 0)));
    }
    return all;
}

/// Answers that no pipe holds.
QByteArray LargeAnswers()
{
    QByteArray lines = R"({"id":1,"op":"set","name":"@A:b","value":")" + QByteArray(40000, 'x') + "\"}\n";
    for (int id = 2; id < 12; ++id)
        lines += R"({"id":)" + QByteArray::number(id) + R"(,"op":"get","name":"@A:b"})" + "\n";
    return lines;
}

class StreamsScenario : public testing::Test
{
protected:
    void Start()
    {
        m_host.Start({"--jsonl"}, [this] {
            dup2(m_input.ends[0], STDIN_FILENO);
            dup2(m_output.ends[1], STDOUT_FILENO);
        });
        m_output.CloseWriter();
        Send(m_input.ends[1], LargeAnswers());
        EXPECT_TRUE(RawHost::Await([this] { return m_output.Filled() > 60000; }));
    }

    Pipe m_input;
    Pipe m_output;
    RawHost m_host;
};

TEST_F(StreamsScenario, OutputThatDoesNotBlockIsWrittenWhole)
{
    fcntl(m_output.ends[1], F_SETFL, O_NONBLOCK);
    Start();
    m_input.CloseWriter();
    EXPECT_EQ(ReadAll(m_output.ends[0]).count('\n'), 12);
    EXPECT_EQ(m_host.AwaitEnd(), 0);
}

TEST_F(StreamsScenario, RequestToEndIsHeardWhileNobodyReads)
{
    Start();
    m_host.Signal(SIGTERM);
    EXPECT_EQ(m_host.AwaitEnd(), 0);
}

TEST_F(StreamsScenario, OutputThatCannotBeWrittenIsAFailure)
{
    m_host.Start({"--jsonl"}, [this] {
        dup2(m_input.ends[0], STDIN_FILENO);
        dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO);
    });
    EXPECT_EQ(m_host.AwaitEnd(), 1);
}

TEST_F(StreamsScenario, InputThatIsNotThereIsAtItsEnd)
{
    m_host.Start({"--jsonl"}, [this] {
        close(STDIN_FILENO);
        dup2(m_output.ends[1], STDOUT_FILENO);
    });
    m_output.CloseWriter();
    EXPECT_EQ(m_host.AwaitEnd(), 0);
    EXPECT_EQ(ReadAll(m_output.ends[0]).count('\n'), 1);
}

TEST_F(StreamsScenario, ValueThatCannotBeReadLeavesTheOneThatIsThere)
{
    m_host.Beside({"set", "key", "before"});
    m_host.Start(
        {"set", "key", "-"}, [] { dup2(open("/", O_RDONLY), STDIN_FILENO); }, "strata");
    EXPECT_EQ(m_host.AwaitEnd(), 1);
    m_host.Start(
        {"get", "key"}, [this] { dup2(m_output.ends[1], STDOUT_FILENO); }, "strata");
    m_output.CloseWriter();
    EXPECT_EQ(m_host.AwaitEnd(), 0);
    EXPECT_EQ(ReadAll(m_output.ends[0]), "before\n");
}

TEST_F(StreamsScenario, WordThatIsNotTextIsMisuseAndTouchesNoKey)
{
    m_host.Start(
        {"set", "key\xff", "1"}, [this] { dup2(m_output.ends[1], STDERR_FILENO); }, "strata");
    m_output.CloseWriter();
    EXPECT_EQ(m_host.AwaitEnd(), 2);
    EXPECT_TRUE(ReadAll(m_output.ends[0]).contains("not UTF-8"));
}

TEST_F(StreamsScenario, WatchOutlivesItsTerminalAndEndsWithItsReader)
{
    Pipe errors;
    m_host.Start(
        {"watch"},
        [this, &errors] {
            signal(SIGHUP, SIG_IGN); // as nohup does
            dup2(m_output.ends[1], STDOUT_FILENO);
            dup2(errors.ends[1], STDERR_FILENO);
        },
        "strata");
    m_output.CloseWriter();
    ASSERT_TRUE(RawHost::Await([&errors] { return errors.Filled() > 0; }));
    m_host.Signal(SIGHUP);
    m_host.Beside({"set", "key", "1"});
    EXPECT_TRUE(RawHost::Await([this] { return m_output.Filled() > 0; }));
    m_output.CloseReader();
    EXPECT_EQ(m_host.AwaitEnd(), 0);
}

/// The host on a terminal of its own, whose other side the test holds.
class TerminalScenario : public testing::Test
{
protected:
    void Start(const char* term)
    {
        int terminal = -1;
        ASSERT_EQ(openpty(&m_screen, &terminal, nullptr, nullptr, nullptr), 0);
        m_host.Start({}, [terminal, term, this] {
            close(m_screen);
            setsid();
            ioctl(terminal, TIOCSCTTY, 0);
            for (int stream = 0; stream < 3; ++stream)
                dup2(terminal, stream);
            setenv("TERM", term, 1);
            BeShell();
        });
        close(terminal);
        m_states.CloseWriter();
        EXPECT_EQ(read(m_states.ends[0], &m_program, sizeof m_program), static_cast<ssize_t>(sizeof m_program));
    }

    /// Goes on in a child, which has the terminal, and tells of its states: a program without a shell cannot be
    /// stopped.
    void BeShell()
    {
        const pid_t program = fork();
        if (program == 0)
        {
            signal(SIGTTOU, SIG_IGN);
            setpgid(0, 0);
            tcsetpgrp(STDIN_FILENO, getpid());
            signal(SIGTTOU, SIG_DFL);
            return;
        }
        int state = 0;
        [[maybe_unused]] ssize_t told = write(m_states.ends[1], &program, sizeof program);
        while (waitpid(program, &state, WUNTRACED) > 0 && WIFSTOPPED(state))
            told = write(m_states.ends[1], &state, sizeof state);
        _exit(WIFEXITED(state) ? WEXITSTATUS(state) : 126);
    }

    ~TerminalScenario() override { close(m_screen); }

    bool Shows(const char* text)
    {
        return RawHost::Await([&] {
            pollfd screen{m_screen, POLLIN, 0};
            std::array<char, 4096> piece{};
            if (poll(&screen, 1, 0) > 0)
            {
                const ssize_t count = read(m_screen, piece.data(), piece.size());
                m_shown.append(piece.data(), static_cast<int>(std::max<ssize_t>(count, 0)));
            }
            const int at = m_shown.indexOf(text, m_seen);
            m_seen = at < 0 ? m_seen : at + static_cast<int>(qstrlen(text));
            return at >= 0;
        });
    }

    bool TakesLines() const
    {
        termios mode{};
        return tcgetattr(m_screen, &mode) == 0 && (mode.c_lflag & ICANON) != 0 && (mode.c_lflag & ECHO) != 0;
    }

    int m_screen = -1;
    Pipe m_states;
    pid_t m_program = 0;
    QByteArray m_shown;
    int m_seen = 0;
    RawHost m_host;
};

TEST_F(TerminalScenario, StoppedHostLeavesTheTerminalAsItWasAndTakesItBack)
{
    Start("xterm");
    ASSERT_TRUE(Shows("veridan> "));
    EXPECT_FALSE(TakesLines());
    Send(m_screen, "\x1a");
    EXPECT_TRUE(RawHost::Await([this] { return m_states.Filled() > 0; }));
    EXPECT_TRUE(TakesLines());
    kill(-m_program, SIGCONT);
    EXPECT_TRUE(Shows("veridan> "));
    EXPECT_FALSE(TakesLines());
    Send(m_screen, "get @A:b\r");
    EXPECT_TRUE(Shows("@A:b = (none)"));
    Send(m_screen, "set @A:b \"\\u001b[31m\\u009b\"\r");
    EXPECT_TRUE(Shows("\\u001b[31m\\u009b"));
    Send(m_screen, "\x04");
    EXPECT_EQ(m_host.AwaitEnd(), 0);
    EXPECT_TRUE(TakesLines());
}

TEST_F(TerminalScenario, TerminalThatKnowsNoEscapesGetsNone)
{
    Start("dumb");
    ASSERT_TRUE(Shows("Data in"));
    Send(m_screen, "quit\n");
    EXPECT_EQ(m_host.AwaitEnd(), 0);
    EXPECT_FALSE(m_shown.contains('\x1b'));
}

} // namespace
