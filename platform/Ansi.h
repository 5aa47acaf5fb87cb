#pragma once

#include <string>
#include <string_view>

namespace Platform
{

/// From and to the system's narrow encoding: the ANSI code page on Windows, UTF-8 on POSIX. What has no form there
/// becomes the system's replacement.
std::wstring FromAnsi(std::string_view text);
std::string ToAnsi(std::wstring_view text);

} // namespace Platform
