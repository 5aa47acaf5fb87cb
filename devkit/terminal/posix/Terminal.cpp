#include "devkit/terminal/Terminal.h"

#include "devkit/process/posix/Pipe.h"

#include <QByteArray>
#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

#include <langinfo.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

bool Terminal::IsInteractive()
{
    return isatty(STDIN_FILENO) != 0 && isatty(STDOUT_FILENO) != 0 && qgetenv("TERM") != "dumb";
}

bool Terminal::HasColours()
{
    return isatty(STDOUT_FILENO) != 0 && qEnvironmentVariableIsEmpty("NO_COLOR") && qgetenv("TERM") != "dumb";
}

bool Terminal::IsUtf8()
{
    return std::strcmp(nl_langinfo(CODESET), "UTF-8") == 0;
}

int Terminal::Width()
{
    winsize size{};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

namespace
{

// What the signal handlers use; one KeyMode lives at a time.
termios g_before{};
termios g_keys{};
int g_resumed = -1; // a pipe's end

void CatchStop();

extern "C" void OnStop(int)
{
    const int error = errno;
    tcsetattr(STDIN_FILENO, TCSANOW, &g_before);
    struct sigaction stop
    {};
    stop.sa_handler = SIG_DFL;
    sigaction(SIGTSTP, &stop, nullptr);
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTSTP);
    raise(SIGTSTP);
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr); // stops here, and goes on here
    CatchStop();
    tcsetattr(STDIN_FILENO, TCSANOW, &g_keys);
    Pipe::Wake(g_resumed);
    errno = error;
}

void CatchStop()
{
    struct sigaction handle
    {};
    handle.sa_handler = &OnStop;
    handle.sa_flags = SA_RESTART;
    sigaction(SIGTSTP, &handle, nullptr);
}

} // namespace

struct Terminal::KeyMode::Saved
{
    bool valid = false;
    Pipe pipe;
    std::unique_ptr<QSocketNotifier> resumed;
};

Terminal::KeyMode::KeyMode(std::function<void()> onResume) : m_saved(std::make_unique<Saved>())
{
    m_saved->valid = tcgetattr(STDIN_FILENO, &g_before) == 0 && m_saved->pipe.IsOpen();
    if (!m_saved->valid)
        return;
    g_resumed = m_saved->pipe.Writer();
    m_saved->resumed = std::make_unique<QSocketNotifier>(m_saved->pipe.Reader(), QSocketNotifier::Read);
    QObject::connect(m_saved->resumed.get(), &QSocketNotifier::activated,
                     [end = m_saved->pipe.Reader(), onResume = std::move(onResume)] {
                         std::array<char, 16> bytes{};
                         [[maybe_unused]] const ssize_t count = read(end, bytes.data(), bytes.size());
                         onResume();
                     });
    g_keys = g_before;
    g_keys.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    g_keys.c_cc[VMIN] = 1;
    g_keys.c_cc[VTIME] = 0;
    tcsetattr(STDIN_FILENO, TCSADRAIN, &g_keys);
    CatchStop();
}

Terminal::KeyMode::~KeyMode()
{
    if (!m_saved->valid)
        return;
    struct sigaction stop
    {};
    stop.sa_handler = SIG_DFL;
    sigaction(SIGTSTP, &stop, nullptr);
    tcsetattr(STDIN_FILENO, TCSADRAIN, &g_before);
}
