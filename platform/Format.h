#pragma once

#include <cstdarg>
#include <cstddef>
#include <string>

namespace Platform
{

/// printf with the meanings of the Windows C library, which does the work there; elsewhere the conversions that
/// Text::FormatConversion knows are done here, and any other is copied as it stands and takes no argument. In a wide
/// format %s and %ls are wide text, %hs and %S narrow text; in a narrow format %s and %hs are narrow, %ls and %S wide.
/// %d, %u, %x, %X and their forms with l are 32 bits wide; %I64d and %lld 64; %Id and %Iu as wide as a pointer. A null
/// text reads
/// "(null)".
///
/// Writes at most `size` characters with the terminator and returns the length, or -1 when the text does not fit.
int Format(wchar_t* buffer, std::size_t size, const wchar_t* format, va_list arguments);
int Format(char* buffer, std::size_t size, const char* format, va_list arguments);

int FormatTo(wchar_t* buffer, std::size_t size, const wchar_t* format, ...);

/// A text of up to 4095 characters; a longer one is empty.
std::wstring FormatString(const wchar_t* format, ...);

} // namespace Platform
