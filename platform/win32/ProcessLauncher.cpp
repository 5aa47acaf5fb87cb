#include "platform/ProcessLauncher.h"

#include "platform/win32/Win32.h"

namespace Platform
{

namespace
{

class WindowsProcessLauncher : public ProcessLauncher
{
public:
    std::wstring SystemFolder() override
    {
        std::wstring folder(MAX_PATH, L'\0');
        const UINT length = ::GetSystemDirectoryW(folder.data(), MAX_PATH);
        folder.resize(length < MAX_PATH ? length : 0);
        return folder;
    }

    KernelHandle Start(const std::wstring& program, const std::wstring& commandLine, std::uint32_t creationFlags,
                       const wchar_t* workingFolder) override
    {
        std::wstring line = commandLine; // the system writes to it
        STARTUPINFOW startup{};
        startup.cb = sizeof(startup);
        PROCESS_INFORMATION process{};
        if (!::CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, creationFlags, nullptr,
                              workingFolder, &startup, &process))
            return nullptr;
        ::CloseHandle(process.hThread);
        return process.hProcess;
    }
};

} // namespace

template <>
ProcessLauncher& System<ProcessLauncher>()
{
    return Detail::NoDestructor<WindowsProcessLauncher>();
}

} // namespace Platform
