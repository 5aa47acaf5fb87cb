#pragma once

#include "url/IdnaCharacter.h"

#include <string>

namespace IdnaTable
{

/// The status is the character's own, never that of a range.
IdnaCharacter Find(char32_t code);

/// Appends what stands for a character in a name: itself, its mapping or nothing. False: it may not be in a name.
bool AppendMapped(char32_t code, std::u16string& text);

} // namespace IdnaTable
