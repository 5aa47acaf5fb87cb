#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Strata
{

/// Whether `text` is well-formed UTF-8 without U+0000, which no text of the C interface can hold.
bool IsUtf8(std::string_view text);

/// `text` as UTF-8; nothing for null or ill-formed text (a lone surrogate, no code point).
std::optional<std::string> ToUtf8Strict(const wchar_t* text);

} // namespace Strata
