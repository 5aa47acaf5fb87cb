#include "tests/support/RequestEnd.h"

#include <windows.h>

bool RequestEnd(qint64 processId)
{
    FreeConsole();
    if (!AttachConsole(static_cast<DWORD>(processId)))
    {
        return false;
    }
    SetConsoleCtrlHandler(nullptr, TRUE); // this process is not meant
    const bool sent = GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0) != FALSE;
    FreeConsole();
    return sent;
}
