#include "devkit/strata/Environment.h"

#include <cstdlib>

#include <unistd.h>

namespace Strata
{

std::string UserSid()
{
    return "S-1-22-1-" + std::to_string(getuid());
}

std::string DefaultStoreFile()
{
    const char* file = std::getenv("ORB_STRATA_STORE");
    return file != nullptr && *file != '\0' ? file : "/var/lib/Norlane/Strata/store.db";
}

} // namespace Strata
