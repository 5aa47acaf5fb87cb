#include "tests/support/ChildProcess.h"

#include <windows.h>

ChildProcess::ChildProcess(Console console)
{
    if (console == Console::None)
    {
        setCreateProcessArgumentsModifier([](CreateProcessArguments* arguments) {
            arguments->flags = (arguments->flags & ~DWORD{CREATE_NO_WINDOW}) | DETACHED_PROCESS;
        });
    }
}

bool ChildProcess::RequestEnd()
{
    FreeConsole();
    if (!AttachConsole(static_cast<DWORD>(processId())))
        return false;
    SetConsoleCtrlHandler(nullptr, TRUE); // this process is not meant
    const bool sent = GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0) != FALSE;
    FreeConsole();
    return sent;
}
