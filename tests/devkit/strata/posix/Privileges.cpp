#include "tests/devkit/strata/Privileges.h"

#include <unistd.h>

bool DropPrivileges()
{
    constexpr uid_t Nobody = 65534;
    return geteuid() != 0 || (setgid(Nobody) == 0 && setuid(Nobody) == 0);
}
