#include "devkit/strata_cli/Console.h"

#include "platform/Text.h"

#include <cstdio>

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

namespace StrataCli
{

namespace
{

HANDLE g_interrupted = nullptr;

BOOL WINAPI OnConsoleEvent(DWORD /*event*/)
{
    SetEvent(g_interrupted);
    return TRUE;
}

} // namespace

std::vector<std::string> CommandLine(int /*argc*/, char** /*argv*/)
{
    std::vector<std::string> arguments;
    int count = 0;
    wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; wide != nullptr && i < count; ++i)
        arguments.push_back(Platform::ToUtf8(wide[i]));
    LocalFree(wide);
    return arguments;
}

std::string ProgramFolder()
{
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    const auto separator = path.rfind(L'\\');
    return separator == std::wstring::npos ? std::string() : Platform::ToUtf8(path.substr(0, separator));
}

void UseBinaryStreams()
{
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    SetConsoleOutputCP(CP_UTF8);
}

void CatchInterrupts()
{
    g_interrupted = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
}

void WaitForInterrupt()
{
    WaitForSingleObject(g_interrupted, INFINITE);
}

} // namespace StrataCli
