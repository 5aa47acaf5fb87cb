#include "platform/Ansi.h"

#include "platform/win32/Win32.h"

namespace Platform
{

std::wstring FromAnsi(std::string_view text)
{
    const auto size = static_cast<int>(text.size());
    const int length = size != 0 ? ::MultiByteToWideChar(CP_ACP, 0, text.data(), size, nullptr, 0) : 0;
    std::wstring result(static_cast<std::size_t>(length), L'\0');
    if (length != 0)
        ::MultiByteToWideChar(CP_ACP, 0, text.data(), size, result.data(), length);
    return result;
}

std::string ToAnsi(std::wstring_view text)
{
    const auto size = static_cast<int>(text.size());
    const int length =
        size != 0 ? ::WideCharToMultiByte(CP_ACP, 0, text.data(), size, nullptr, 0, nullptr, nullptr) : 0;
    std::string result(static_cast<std::size_t>(length), '\0');
    if (length != 0)
        ::WideCharToMultiByte(CP_ACP, 0, text.data(), size, result.data(), length, nullptr, nullptr);
    return result;
}

} // namespace Platform
