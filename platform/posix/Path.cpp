#include "platform/Path.h"

namespace Platform
{

const wchar_t kPathSeparator = L'/';
const wchar_t* const kPathSeparators = L"/";

bool IsAbsolutePath(std::wstring_view path)
{
    return !path.empty() && path.front() == kPathSeparator;
}

} // namespace Platform
