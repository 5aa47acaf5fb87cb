#include "devkit/process/Processes.h"

#include <winsock2.h>

#include <windows.h>

#include <cstdlib>

void StartApart(QProcess& process, const QString& program, const QStringList& arguments, qintptr socket)
{
    process.setCreateProcessArgumentsModifier([](QProcess::CreateProcessArguments* creation) {
        creation->flags = (creation->flags & ~static_cast<unsigned long>(CREATE_NO_WINDOW)) | DETACHED_PROCESS;
    });
    const auto handle = reinterpret_cast<HANDLE>(socket);
    SetHandleInformation(handle, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    process.start(program, arguments);
    SetHandleInformation(handle, HANDLE_FLAG_INHERIT, 0);
}

qintptr AcceptConnection(qintptr socket)
{
    const SOCKET next = accept(static_cast<SOCKET>(socket), nullptr, nullptr);
    SetHandleInformation(reinterpret_cast<HANDLE>(next), HANDLE_FLAG_INHERIT, 0);
    return static_cast<qintptr>(next);
}

void LeaveTerminal() {} // it was started without one

void EndProcess(qint64 id)
{
    if (const HANDLE process = OpenProcess(PROCESS_TERMINATE, FALSE, static_cast<DWORD>(id)))
    {
        TerminateProcess(process, EXIT_FAILURE);
        CloseHandle(process);
    }
}
