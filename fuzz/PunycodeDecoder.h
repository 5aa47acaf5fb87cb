#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The text that a Punycode of lower-case ASCII stands for, by RFC 3492, section 6.2. Nothing: it is none.
std::optional<std::u32string> DecodePunycode(std::string_view punycode);
