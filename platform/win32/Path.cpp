#include "platform/Path.h"

namespace Platform
{

const wchar_t kPathSeparator = L'\\';
const wchar_t* const kPathSeparators = L"\\/";

/// A drive with a root, or a share. A path that begins with one separator depends on the current drive.
bool IsAbsolutePath(std::wstring_view path)
{
    const auto isSeparator = [](wchar_t character) { return character == L'\\' || character == L'/'; };
    const auto isLetter = [](wchar_t character) {
        return (character >= L'A' && character <= L'Z') || (character >= L'a' && character <= L'z');
    };
    return (path.size() >= 3 && isLetter(path[0]) && path[1] == L':' && isSeparator(path[2])) ||
           (path.size() >= 3 && isSeparator(path[0]) && isSeparator(path[1]) && !isSeparator(path[2]));
}

} // namespace Platform
