#include "devkit/strata/RealPath.h"

#include <filesystem>
#include <system_error>

std::string Strata::RealPath(const std::string& path)
{
    std::error_code failed;
    const auto real = std::filesystem::canonical(path, failed);
    return failed ? path : real.string();
}
