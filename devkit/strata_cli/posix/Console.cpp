#include "devkit/strata_cli/Console.h"

#include <array>
#include <csignal>

#include <unistd.h>

namespace StrataCli
{

namespace
{

sigset_t Interrupts()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaddset(&signals, signal);
    return signals;
}

} // namespace

std::vector<std::string> CommandLine(int argc, char** argv)
{
    return argc < 1 ? std::vector<std::string>() : std::vector<std::string>(argv + 1, argv + argc);
}

std::string ProgramFolder()
{
    std::array<char, 4096> path{};
    const auto length = readlink("/proc/self/exe", path.data(), path.size());
    const std::string file(path.data(), length < 0 ? 0 : static_cast<std::size_t>(length));
    const auto slash = file.rfind('/');
    return slash == std::string::npos ? std::string() : file.substr(0, slash);
}

void UseBinaryStreams() {}

void CatchInterrupts()
{
    const sigset_t signals = Interrupts();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

void WaitForInterrupt()
{
    const sigset_t signals = Interrupts();
    int signal = 0;
    sigwait(&signals, &signal);
}

} // namespace StrataCli
