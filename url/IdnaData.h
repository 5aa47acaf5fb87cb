#pragma once

#include "url/IdnaCharacter.h"

#include <cstddef>
#include <cstdint>

/// The data of all characters, which scripts/idna/generate writes. Some 40 KB; only IdnaTable reads it.
namespace IdnaData
{

/// A range of characters of one kind up to the next range: its first character above kIdnaCharacterBits of Pack().
extern const std::uint32_t kRanges[];
extern const std::size_t kRangeCount;

/// Mapped characters from `first` to the next run: each has `length` units of kPool, one after the other from `value`.
/// With no length, `value` is the distance to the character that each is mapped to.
struct Run
{
    std::uint32_t first : 24;
    std::uint32_t length : 8;
    std::int32_t value;
};

extern const Run kRuns[];
extern const std::size_t kRunCount;

extern const char16_t kPool[]; // UTF-16

extern const char kUnicodeVersion[];

} // namespace IdnaData
