#include "platform/Format.h"

#include <cstdio>

namespace Platform
{

namespace
{

/// The C library leaves out the terminator of a text that fills the buffer, and tells of it by the length only.
template <class Char>
int Terminated(Char* buffer, std::size_t size, int length)
{
    if (length < 0 || static_cast<std::size_t>(length) >= size)
    {
        return -1;
    }
    buffer[length] = Char{0};
    return length;
}

} // namespace

int Format(wchar_t* buffer, std::size_t size, const wchar_t* format, va_list arguments)
{
    return Terminated(buffer, size, ::_vsnwprintf(buffer, size, format, arguments));
}

int Format(char* buffer, std::size_t size, const char* format, va_list arguments)
{
    return Terminated(buffer, size, ::_vsnprintf(buffer, size, format, arguments));
}

} // namespace Platform
