#include "text/Utf.h"

#include <cstdint>
#include <limits>

namespace Text
{

namespace
{

constexpr char32_t kReplacement = 0xFFFD;
constexpr bool kWideIsUtf16 = std::numeric_limits<wchar_t>::digits <= 16;

constexpr bool IsHighSurrogate(char32_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

constexpr bool IsLowSurrogate(char32_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

constexpr bool IsScalar(char32_t code)
{
    return code <= 0x10FFFF && !(code >= 0xD800 && code <= 0xDFFF);
}

/// The code point at `at`, which moves behind it.
char32_t Next(std::wstring_view text, std::size_t& at)
{
    const auto unit = static_cast<char32_t>(text[at++]);
    if (kWideIsUtf16 && IsHighSurrogate(unit) && at < text.size() && IsLowSurrogate(static_cast<char32_t>(text[at])))
        return 0x10000 + ((unit - 0xD800) << 10) + (static_cast<char32_t>(text[at++]) - 0xDC00);
    return IsScalar(unit) ? unit : kReplacement;
}

void Append(std::string& text, char32_t code)
{
    const auto tail = [code](unsigned shift) { return static_cast<char>(0x80 | ((code >> shift) & 0x3F)); };
    if (code < 0x80)
        text += static_cast<char>(code);
    else if (code < 0x800)
        text += {static_cast<char>(0xC0 | (code >> 6)), tail(0)};
    else if (code < 0x10000)
        text += {static_cast<char>(0xE0 | (code >> 12)), tail(6), tail(0)};
    else
        text += {static_cast<char>(0xF0 | (code >> 18)), tail(12), tail(6), tail(0)};
}

void Append(std::wstring& text, char32_t code)
{
    if (kWideIsUtf16 && code >= 0x10000)
    {
        text += static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10));
        text += static_cast<wchar_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
    }
    else
        text += static_cast<wchar_t>(code);
}

/// The code point at `at`, which moves behind it; over-long forms, surrogates and cut sequences are ill-formed.
char32_t Next(std::string_view text, std::size_t& at)
{
    const auto lead = static_cast<unsigned char>(text[at++]);
    if (lead < 0x80)
        return lead;
    const unsigned tails = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC2 || lead > 0xF4)
        return kReplacement;
    constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
    char32_t code = lead & (0x3Fu >> tails);
    for (unsigned i = 0; i < tails; ++i)
    {
        if (at == text.size() || (static_cast<unsigned char>(text[at]) & 0xC0) != 0x80)
            return kReplacement;
        code = (code << 6) | (static_cast<unsigned char>(text[at++]) & 0x3Fu);
    }
    return code >= kSmallest[tails] && IsScalar(code) ? code : kReplacement;
}

template <class Target, class Source>
Target Convert(Source text)
{
    // Nearly every text is ASCII, or begins so; then each character is one unit.
    Target result(text.size(), 0);
    std::size_t at = 0;
    for (; at < text.size() && static_cast<char32_t>(text[at]) < 0x80; ++at)
        result[at] = static_cast<typename Target::value_type>(text[at]);
    result.resize(at);
    while (at < text.size())
        Append(result, Next(text, at));
    return result;
}

} // namespace

std::string ToUtf8(std::wstring_view text)
{
    return Convert<std::string>(text);
}

std::wstring FromUtf8(std::string_view text)
{
    return Convert<std::wstring>(text);
}

std::size_t ToUtf16(std::wstring_view text, char16_t* target)
{
    // Nearly every text is within the basic plane; then each character is one unit.
    char32_t allBits = 0;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        allBits |= static_cast<char32_t>(text[i]);
        target[i] = static_cast<char16_t>(text[i]);
    }
    if (allBits < 0x10000)
        return text.size();
    char16_t* at = target;
    for (const wchar_t character : text)
    {
        const auto code = static_cast<char32_t>(character);
        if (code < 0x10000 || code > 0x10FFFF)
            *at++ = static_cast<char16_t>(code < 0x10000 ? code : kReplacement);
        else
        {
            *at++ = static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
            *at++ = static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
        }
    }
    return static_cast<std::size_t>(at - target);
}

std::wstring FromUtf16(std::u16string_view text)
{
    std::wstring result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at)
    {
        const char32_t unit = text[at];
        if (IsHighSurrogate(unit) && at + 1 < text.size() && IsLowSurrogate(text[at + 1]))
            Append(result, 0x10000 + ((unit - 0xD800) << 10) + (char32_t{text[++at]} - 0xDC00));
        else
            result += static_cast<wchar_t>(unit);
    }
    return result;
}

} // namespace Text
