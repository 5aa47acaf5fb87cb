#include "util/LaunchProcess.h"

#include "platform/Path.h"
#include "platform/ProcessLauncher.h"

#include <string>

Platform::KernelHandle LaunchProcess(const wchar_t* program, const wchar_t* arguments, std::uint32_t creationFlags,
                                     const wchar_t* workingFolder)
{
    auto& launcher = Platform::Get<Platform::ProcessLauncher>();
    const std::wstring folder = launcher.SystemFolder();
    if (folder.empty())
        return nullptr;
    const std::wstring path = Platform::JoinPath(folder, program);
    std::wstring commandLine = L"\"" + path + L"\"";
    if (arguments)
        commandLine.append(L" ").append(arguments);
    return launcher.Start(path, commandLine, creationFlags, workingFolder);
}
