#include "tests/devkit/strata/Privileges.h"

#include <unistd.h>

bool DropPrivileges()
{
    constexpr uid_t kNobody = 65534;
    return geteuid() != 0 || (setgid(kNobody) == 0 && setuid(kNobody) == 0);
}
