#include "platform/Path.h"

namespace Platform
{

const wchar_t PathSeparator = L'/';
const wchar_t* const PathSeparators = L"/";

bool IsAbsolutePath(std::wstring_view path)
{
    return !path.empty() && path.front() == PathSeparator;
}

} // namespace Platform
