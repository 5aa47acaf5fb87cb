#include "devkit/strata/Utf8.h"

#include "platform/Text.h"

namespace Strata
{

namespace
{

/// The length of the well-formed sequence that `text` begins with, or 0.
std::size_t SequenceLength(std::string_view text)
{
    const auto byte = [text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    const unsigned lead = byte(0);
    if (lead < 0x80)
        return lead == 0 ? 0 : 1;
    const std::size_t length = lead >= 0xC2 && lead <= 0xDF   ? 2
                               : lead >= 0xE0 && lead <= 0xEF ? 3
                               : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                              : 0;
    if (length == 0 || text.size() < length)
        return 0;
    for (std::size_t i = 1; i < length; ++i)
        if ((byte(i) & 0xC0) != 0x80)
            return 0;
    const unsigned second = byte(1);
    const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool surrogate = lead == 0xED && second > 0x9F;
    const bool beyond = lead == 0xF4 && second > 0x8F;
    return overlong || surrogate || beyond ? 0 : length;
}

} // namespace

bool IsUtf8(std::string_view text)
{
    while (!text.empty())
    {
        const std::size_t length = SequenceLength(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

std::optional<std::string> ToUtf8Strict(const wchar_t* text)
{
    if (!text)
        return std::nullopt;
    const std::wstring_view wide(text);
    std::string utf8 = Platform::ToUtf8(wide);
    // What is ill-formed becomes a replacement character: it does not come back as it was.
    if (Platform::FromUtf8(utf8) != wide)
        return std::nullopt;
    return utf8;
}

} // namespace Strata
