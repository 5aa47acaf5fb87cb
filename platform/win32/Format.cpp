#include "platform/Format.h"

#include <cstdio>
#include <cwchar>

namespace Platform
{

namespace
{

/// A text of exactly the buffer's size comes back without a terminator, with its length; a longer one with -1.
int Fitting(int length, std::size_t size)
{
    return length >= 0 && static_cast<std::size_t>(length) < size ? length : -1;
}

} // namespace

int Format(wchar_t* buffer, std::size_t size, const wchar_t* format, va_list arguments)
{
    return Fitting(::_vsnwprintf(buffer, size, format, arguments), size);
}

int Format(char* buffer, std::size_t size, const char* format, va_list arguments)
{
    return Fitting(::_vsnprintf(buffer, size, format, arguments), size);
}

} // namespace Platform
