#include "devkit/terminal/Terminal.h"

#include <QtGlobal>

#include <windows.h>

namespace
{

bool IsConsole(DWORD stream)
{
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(stream), &mode) != FALSE;
}

} // namespace

bool Terminal::IsInteractive()
{
    return IsConsole(STD_INPUT_HANDLE) && IsConsole(STD_OUTPUT_HANDLE);
}

bool Terminal::HasColours()
{
    DWORD mode = 0;
    const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    return GetConsoleMode(output, &mode) != FALSE && qEnvironmentVariableIsEmpty("NO_COLOR") &&
           SetConsoleMode(output, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != FALSE;
}

bool Terminal::IsUtf8()
{
    return !IsConsole(STD_OUTPUT_HANDLE) || SetConsoleOutputCP(CP_UTF8) != FALSE;
}

int Terminal::Width()
{
    CONSOLE_SCREEN_BUFFER_INFO info{};
    return GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &info) != FALSE
               ? info.srWindow.Right - info.srWindow.Left + 1
               : 80;
}

struct Terminal::KeyMode::Saved
{
    bool valid = false;
    DWORD mode = 0;
    UINT codePage = 0;
};

Terminal::KeyMode::KeyMode(std::function<void()>) : m_saved(std::make_unique<Saved>())
{
    const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    m_saved->valid = GetConsoleMode(input, &m_saved->mode) != FALSE;
    m_saved->codePage = GetConsoleCP();
    if (m_saved->valid)
    {
        constexpr DWORD kCooked = ENABLE_LINE_INPUT | ENABLE_ECHO_INPUT;
        SetConsoleMode(input, (m_saved->mode & ~kCooked) | ENABLE_VIRTUAL_TERMINAL_INPUT);
        SetConsoleCP(CP_UTF8);
    }
}

Terminal::KeyMode::~KeyMode()
{
    if (m_saved->valid)
    {
        SetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), m_saved->mode);
        SetConsoleCP(m_saved->codePage);
    }
}
