#include "devkit/process/Processes.h"

#include <csignal>
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

void StartApart(QProcess& process, const QString& program, const QStringList& arguments, qintptr socket)
{
    fcntl(static_cast<int>(socket), F_SETFD, 0);
    process.start(program, arguments);
    fcntl(static_cast<int>(socket), F_SETFD, FD_CLOEXEC);
}

qintptr AcceptConnection(qintptr socket)
{
    return accept4(static_cast<int>(socket), nullptr, nullptr, SOCK_CLOEXEC);
}

void LeaveTerminal()
{
    setsid();
}

void EndProcess(qint64 id)
{
    kill(static_cast<pid_t>(id), SIGKILL);
}
