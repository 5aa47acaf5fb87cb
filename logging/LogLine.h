#pragma once

#include "platform/Clock.h"

#include <cstddef>
#include <string_view>

namespace NlOrbLogging
{

/// Prints a line of the log, as the format
/// "%04d-%02d-%02d %02d:%02d:%02d.%03d [%04x.%04x] %s: %s\r\n" would with the time, the ids of the calling process and
/// thread, the level's tag of two characters and the message. Returns its length, or 0 when it does not fit with its
/// terminator.
std::size_t PrintLine(wchar_t* buffer, std::size_t size, const Platform::CalendarTime& time, const wchar_t* tag,
                      std::wstring_view message);

} // namespace NlOrbLogging
