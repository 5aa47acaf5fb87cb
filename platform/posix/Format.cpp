#include "platform/Format.h"

#include "platform/posix/Formatter.h"

namespace Platform
{

int Format(wchar_t* buffer, std::size_t size, const wchar_t* format, va_list arguments)
{
    return Formatter<wchar_t>(buffer, size, arguments).Run(format);
}

int Format(char* buffer, std::size_t size, const char* format, va_list arguments)
{
    return Formatter<char>(buffer, size, arguments).Run(format);
}

} // namespace Platform
