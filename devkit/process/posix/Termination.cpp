#include "devkit/process/Termination.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace
{

constexpr std::array<int, 3> Signals{SIGINT, SIGTERM, SIGHUP};

int g_wake = -1; // where the handler writes

extern "C" void OnSignal(int)
{
    const int error = errno;
    const char byte = 0;
    // A full pipe already holds a request.
    [[maybe_unused]] const ssize_t written = write(g_wake, &byte, 1);
    errno = error;
}

} // namespace

struct Termination::Implementation
{
    std::array<int, 2> pipe{-1, -1};
    std::unique_ptr<QSocketNotifier> notifier;
};

Termination::Termination(std::function<void()> onRequest) : m_implementation(std::make_unique<Implementation>())
{
    auto& ends = m_implementation->pipe;
    if (pipe(ends.data()) != 0)
        return;
    for (const int end : ends)
    {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    m_implementation->notifier = std::make_unique<QSocketNotifier>(ends[0], QSocketNotifier::Read);
    QObject::connect(m_implementation->notifier.get(), &QSocketNotifier::activated,
                     [end = ends[0], onRequest = std::move(onRequest)] {
                         std::array<char, 16> bytes{};
                         [[maybe_unused]] const ssize_t count = read(end, bytes.data(), bytes.size());
                         onRequest();
                     });
    g_wake = ends[1];
    for (const int number : Signals)
        static_cast<void>(std::signal(number, &OnSignal));
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
}

Termination::~Termination()
{
    for (const int number : Signals)
        static_cast<void>(std::signal(number, SIG_DFL));
    static_cast<void>(std::signal(SIGPIPE, SIG_DFL));
    for (const int end : m_implementation->pipe)
        close(end);
}
