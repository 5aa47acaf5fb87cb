#include "devkit/process/Termination.h"

#include "devkit/process/posix/Pipe.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <thread>
#include <utility>

#include <unistd.h>

namespace
{

constexpr std::array<int, 3> kSignals{SIGINT, SIGTERM, SIGHUP};
constexpr char kRequest = 'r';
constexpr char kStop = 's';

int g_wake = -1; // where the handler writes

extern "C" void OnSignal(int)
{
    Pipe::Wake(g_wake, kRequest);
}

} // namespace

struct Termination::Implementation
{
    Pipe pipe;
    std::array<struct sigaction, kSignals.size()> before{};
    struct sigaction brokenPipe
    {};
    std::function<void()> onRequest;
    std::thread thread;

    void Run() const
    {
        char what = kStop;
        while (read(pipe.Reader(), &what, 1) > 0 ? what != kStop : errno == EINTR)
            onRequest();
    }
};

Termination::Termination(std::function<void()> onRequest) : m_implementation(std::make_unique<Implementation>())
{
    auto& self = *m_implementation;
    self.onRequest = std::move(onRequest);
    if (!self.pipe.IsOpen())
        return;
    g_wake = self.pipe.Writer();
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
    Pipe::Wake(g_wake, kStop);
    self.thread.join();
}
