#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Platform
{

/// Takes a command line apart as a program on Windows does: quotes keep blanks, a backslash is one unless a quote
/// follows the run of them, where two stand for one and an odd one for the quote itself.
std::vector<std::wstring> SplitCommandLine(std::wstring_view commandLine);

} // namespace Platform
