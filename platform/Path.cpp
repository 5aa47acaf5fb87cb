#include "platform/Path.h"

namespace Platform
{

std::wstring JoinPath(std::wstring_view folder, std::wstring_view name)
{
    std::wstring path;
    path.reserve(folder.size() + 1 + name.size());
    return path.append(folder).append(1, kPathSeparator).append(name);
}

std::wstring ParentFolder(std::wstring_view path)
{
    const auto separator = path.find_last_of(kPathSeparators);
    return std::wstring(path.substr(0, separator == std::wstring_view::npos ? 0 : separator));
}

} // namespace Platform
