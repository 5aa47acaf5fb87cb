#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The ASCII form of a text by RFC 3492, without a prefix. Nothing: a number would not fit its type.
std::optional<std::string> EncodePunycode(std::u32string_view text);
