#include "devkit/process/Processes.h"

#include <windows.h>

#include <cstdlib>

void ShareSocket(qintptr socket, bool shared)
{
    SetHandleInformation(reinterpret_cast<HANDLE>(socket), HANDLE_FLAG_INHERIT, shared ? HANDLE_FLAG_INHERIT : 0);
}

void EndProcess(qint64 id)
{
    if (const HANDLE process = OpenProcess(PROCESS_TERMINATE, FALSE, static_cast<DWORD>(id)))
    {
        TerminateProcess(process, EXIT_FAILURE);
        CloseHandle(process);
    }
}

void LeaveTerminal()
{
    FreeConsole();
}
