#pragma once

#include <string>

namespace Strata
{

/// A file's path behind links: what belongs to the file stands beside it and not beside a link to it. The path as it is
/// where there is no file.
std::string RealPath(const std::string& path);

} // namespace Strata
