#include "platform/Text.h"

#include "platform/win32/Win32.h"

namespace Platform
{

std::wstring FromAnsi(std::string_view text)
{
    const auto size = static_cast<int>(text.size());
    const int length = size != 0 ? ::MultiByteToWideChar(CP_ACP, 0, text.data(), size, nullptr, 0) : 0;
    std::wstring result(static_cast<std::size_t>(length), L'\0');
    if (length != 0)
    {
        ::MultiByteToWideChar(CP_ACP, 0, text.data(), size, result.data(), length);
    }
    return result;
}

} // namespace Platform
