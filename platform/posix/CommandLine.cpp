#include "platform/posix/CommandLine.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace Platform
{

std::vector<std::wstring> SplitCommandLine(std::wstring_view commandLine)
{
    std::vector<std::wstring> arguments;
    std::wstring argument;
    bool inArgument = false;
    bool quoted = false;
    for (std::size_t at = 0; at < commandLine.size(); ++at)
    {
        const std::size_t backslashes = std::min(commandLine.find_first_not_of(L'\\', at), commandLine.size()) - at;
        at += backslashes;
        const wchar_t next = at < commandLine.size() ? commandLine[at] : L' ';
        const bool beforeQuote = next == L'"';
        argument.append(beforeQuote ? backslashes / 2 : backslashes, L'\\');
        inArgument = inArgument || backslashes != 0;
        if (beforeQuote && backslashes % 2 == 0)
        {
            quoted = !quoted;
            inArgument = true;
        }
        else if (!quoted && (next == L' ' || next == L'\t'))
        {
            if (inArgument)
                arguments.push_back(std::exchange(argument, {}));
            inArgument = false;
        }
        else if (at < commandLine.size())
        {
            argument += next;
            inArgument = true;
        }
    }
    if (inArgument)
        arguments.push_back(argument);
    return arguments;
}

} // namespace Platform
