#include "platform/ProcessLauncher.h"

#include "platform/posix/CommandLine.h"
#include "platform/posix/KernelObject.h"
#include "text/Utf.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <vector>

namespace Platform
{

namespace
{

constexpr int kFirstOwnFile = 3; // behind standard input, output and error

class Process : public KernelObject
{
public:
    explicit Process(pid_t id) : m_id(id) {}
    ~Process() override { ::waitpid(m_id, nullptr, WNOHANG); }

private:
    const pid_t m_id;
};

int Spawn(pid_t& id, const std::string& program, std::vector<char*>& arguments, bool ownSession, const char* folder)
{
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawnattr_init(&attributes);
    ::posix_spawn_file_actions_addclosefrom_np(&actions, kFirstOwnFile);
    if (folder)
        ::posix_spawn_file_actions_addchdir_np(&actions, folder);
    if (ownSession)
        ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    const int error = ::posix_spawn(&id, program.c_str(), &actions, &attributes, arguments.data(), environ);
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&actions);
    return error;
}

class PosixProcessLauncher : public ProcessLauncher
{
public:
    std::wstring SystemFolder() override { return L"/usr/bin"; }

    KernelHandle Start(const std::wstring& program, const std::wstring& commandLine, std::uint32_t creationFlags,
                       const wchar_t* workingFolder) override
    {
        std::vector<std::string> texts;
        for (const std::wstring& argument : SplitCommandLine(commandLine))
            texts.push_back(Text::ToUtf8(argument));
        std::vector<char*> arguments;
        for (std::string& text : texts)
            arguments.push_back(text.data());
        arguments.push_back(nullptr);

        const std::string folder = workingFolder ? Text::ToUtf8(workingFolder) : std::string();
        pid_t id = 0;
        const int error = Spawn(id, Text::ToUtf8(program), arguments, (creationFlags & kDetached) != 0,
                                workingFolder ? folder.c_str() : nullptr);
        errno = error;
        return error == 0 ? static_cast<KernelObject*>(new Process(id)) : nullptr;
    }
};

} // namespace

template <>
ProcessLauncher& System<ProcessLauncher>()
{
    return Detail::NoDestructor<PosixProcessLauncher>();
}

} // namespace Platform
