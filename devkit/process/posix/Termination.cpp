#include "devkit/process/Termination.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace
{

constexpr std::array<int, 3> kSignals{SIGINT, SIGTERM, SIGHUP};
constexpr char kRequest = 'r';
constexpr char kStop = 's';

int g_wake = -1; // where the handler writes

void Send(char what)
{
    const int error = errno;
    // A full pipe already holds a request.
    [[maybe_unused]] const ssize_t written = write(g_wake, &what, 1);
    errno = error;
}

extern "C" void OnSignal(int)
{
    Send(kRequest);
}

} // namespace

struct Termination::Implementation
{
    std::array<int, 2> pipe{-1, -1};
    std::array<struct sigaction, kSignals.size()> before{};
    struct sigaction brokenPipe
    {};
    std::function<void()> onRequest;
    std::thread thread;

    void Run() const
    {
        char what = kStop;
        while (read(pipe[0], &what, 1) > 0 ? what != kStop : errno == EINTR)
            onRequest();
    }
};

Termination::Termination(std::function<void()> onRequest) : m_implementation(std::make_unique<Implementation>())
{
    auto& self = *m_implementation;
    self.onRequest = std::move(onRequest);
    if (pipe(self.pipe.data()) != 0)
        return;
    for (const int end : self.pipe)
        fcntl(end, F_SETFD, FD_CLOEXEC);
    fcntl(self.pipe[1], F_SETFL, O_NONBLOCK);
    g_wake = self.pipe[1];
    struct sigaction ignore
    {};
    ignore.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &ignore, &self.brokenPipe);
    struct sigaction handle
    {};
    handle.sa_handler = &OnSignal;
    handle.sa_flags = SA_RESTART;
    for (std::size_t i = 0; i < kSignals.size(); ++i)
    {
        sigaction(kSignals[i], nullptr, &self.before[i]);
        if (self.before[i].sa_handler != SIG_IGN)
            sigaction(kSignals[i], &handle, nullptr);
    }
    self.thread = std::thread([&self] { self.Run(); });
}

Termination::~Termination()
{
    auto& self = *m_implementation;
    if (!self.thread.joinable())
        return;
    for (std::size_t i = 0; i < kSignals.size(); ++i)
        sigaction(kSignals[i], &self.before[i], nullptr);
    sigaction(SIGPIPE, &self.brokenPipe, nullptr);
    Send(kStop);
    self.thread.join();
    for (const int end : self.pipe)
        close(end);
}
