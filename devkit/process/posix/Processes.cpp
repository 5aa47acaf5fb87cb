#include "devkit/process/Processes.h"

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

void ShareSocket(qintptr socket, bool shared)
{
    fcntl(static_cast<int>(socket), F_SETFD, shared ? 0 : FD_CLOEXEC);
}

void EndProcess(qint64 id)
{
    kill(static_cast<pid_t>(id), SIGKILL);
}

void LeaveTerminal()
{
    setsid();
}
