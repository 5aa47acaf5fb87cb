#include "tests/support/RequestEnd.h"

#include <signal.h>

bool RequestEnd(qint64 processId)
{
    return kill(static_cast<pid_t>(processId), SIGTERM) == 0;
}
