#pragma once

#include "platform/Clock.h"

#include <cstddef>

namespace NlOrbLogging
{

/// What PrintPrefix() writes at most, whatever the time is.
constexpr std::size_t kLongestPrefix = 104;

/// Prints what stands before the message of a line, as the format
/// "%04d-%02d-%02d %02d:%02d:%02d.%03d [%04x.%04x] %s: " would with the time, the ids of the calling process and
/// thread, and the level's tag of two characters. Returns its length, or 0 when the line is dropped: beside the message
/// it has room for 50 characters, with the terminator.
std::size_t PrintPrefix(char16_t* buffer, const Platform::CalendarTime& time, const wchar_t* tag);

} // namespace NlOrbLogging
