#include "devkit/strata_cli/Console.h"

#include <array>
#include <csignal>
#include <cstdlib>

#include <pwd.h>
#include <unistd.h>

namespace StrataCli
{

namespace
{

std::string EnvironmentText(const char* name)
{
    const char* text = std::getenv(name);
    return text == nullptr ? std::string() : text;
}

std::string HomeFolder()
{
    if (std::string home = EnvironmentText("HOME"); !home.empty())
    {
        return home;
    }
    const passwd* user = getpwuid(getuid());
    return user == nullptr ? "/" : user->pw_dir;
}

sigset_t Interrupts()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
    {
        sigaddset(&signals, signal);
    }
    return signals;
}

} // namespace

std::vector<std::string> CommandLine(int argc, char** argv)
{
    return argc < 1 ? std::vector<std::string>() : std::vector<std::string>(argv + 1, argv + argc);
}

std::string DefaultStoreFile()
{
    if (std::string file = EnvironmentText("ORB_STRATA_STORE"); !file.empty())
    {
        return file;
    }
    // A relative folder in the variable is to be ignored, as the convention for it says.
    const std::string data = EnvironmentText("XDG_DATA_HOME");
    return (data.substr(0, 1) == "/" ? data : HomeFolder() + "/.local/share") + "/veridan/store.db";
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
