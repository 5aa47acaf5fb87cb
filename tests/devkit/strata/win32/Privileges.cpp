#include "tests/devkit/strata/Privileges.h"

bool DropPrivileges()
{
    return true;
}
