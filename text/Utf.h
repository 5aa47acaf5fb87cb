#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Text
{

/// Conversions between the encodings that meet here. A wchar_t is a UTF-16 unit where it has 16 bits and a code point
/// where it has 32. Nothing fails: what is ill-formed becomes U+FFFD.
std::string ToUtf8(std::wstring_view text);
std::wstring FromUtf8(std::string_view text);

/// Writes the UTF-16LE form of `text` to `target`, which has room for two units for each character of it. Returns the
/// units written. A lone surrogate is kept as it is, both ways.
std::size_t ToUtf16(std::wstring_view text, char16_t* target);
std::wstring FromUtf16(std::u16string_view text);

} // namespace Text
