#include "tests/support/ChildProcess.h"

#include <signal.h>

ChildProcess::ChildProcess(Console) {}

bool ChildProcess::RequestEnd()
{
    return ::kill(static_cast<pid_t>(processId()), SIGTERM) == 0;
}
