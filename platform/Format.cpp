#include "platform/Format.h"

#include <array>

namespace Platform
{

int FormatTo(wchar_t* buffer, std::size_t size, const wchar_t* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int length = Format(buffer, size, format, arguments);
    va_end(arguments);
    return length;
}

std::wstring FormatString(const wchar_t* format, ...)
{
    std::array<wchar_t, 4096> buffer;
    va_list arguments;
    va_start(arguments, format);
    const int length = Format(buffer.data(), buffer.size(), format, arguments);
    va_end(arguments);
    return length > 0 ? std::wstring(buffer.data(), static_cast<std::size_t>(length)) : std::wstring();
}

} // namespace Platform
