#include "devkit/strata/Utf8.h"

#include "text/Utf.h"

#include <algorithm>

namespace Strata
{

bool IsUtf8(std::string_view text)
{
    const auto isAscii = [](char c) { return c > 0; };
    if (std::all_of(text.begin(), text.end(), isAscii))
        return true;
    // What is ill-formed becomes a replacement character: it does not come back as it was.
    return text.find('\0') == std::string_view::npos && Text::ToUtf8(Text::FromUtf8(text)) == text;
}

std::optional<std::string> ToUtf8Strict(const wchar_t* text)
{
    if (!text)
        return std::nullopt;
    const std::wstring_view wide(text);
    std::string utf8 = Text::ToUtf8(wide);
    if (Text::FromUtf8(utf8) != wide)
        return std::nullopt;
    return utf8;
}

} // namespace Strata
