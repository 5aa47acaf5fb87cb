#pragma once

#include <string>

namespace Strata
{

/// The SID of the user that this process runs as; empty if the system does not tell.
std::string UserSid();

/// Where the store is unless someone says otherwise: the environment variable ORB_STRATA_STORE, else the machine-wide
/// place. A UTF-8 path.
std::string DefaultStoreFile();

} // namespace Strata
