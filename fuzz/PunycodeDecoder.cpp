#include "fuzz/PunycodeDecoder.h"

#include <algorithm>
#include <cstdint>

namespace
{

std::uint64_t Adapt(std::uint64_t delta, std::uint64_t count, bool first)
{
    delta /= first ? 700 : 2;
    delta += delta / count;
    std::uint64_t bias = 0;
    for (; delta > 455; bias += 36)
        delta /= 35;
    return bias + 36 * delta / (delta + 38);
}

/// Takes a number from the front of the digits.
std::optional<std::uint64_t> TakeNumber(std::string_view& digits, std::uint64_t bias)
{
    std::uint64_t number = 0;
    std::uint64_t weight = 1;
    for (std::uint64_t position = 36; !digits.empty() && weight <= UINT32_MAX; position += 36)
    {
        const auto digit = std::string_view("abcdefghijklmnopqrstuvwxyz0123456789").find(digits.front());
        if (digit == std::string_view::npos)
            return std::nullopt;
        digits.remove_prefix(1);
        number += digit * weight;
        const std::uint64_t threshold = position <= bias ? 1 : std::min<std::uint64_t>(position - bias, 26);
        if (digit < threshold)
            return number;
        weight *= 36 - threshold;
    }
    return std::nullopt;
}

} // namespace

std::optional<std::u32string> DecodePunycode(std::string_view punycode)
{
    std::u32string text;
    if (const auto delimiter = punycode.rfind('-'); delimiter != std::string_view::npos)
    {
        text.assign(punycode.begin(), punycode.begin() + static_cast<std::ptrdiff_t>(delimiter));
        punycode.remove_prefix(delimiter + 1);
    }
    std::uint64_t code = 128;
    std::uint64_t at = 0;
    std::uint64_t bias = 72;
    while (!punycode.empty())
    {
        const auto step = TakeNumber(punycode, bias);
        const std::uint64_t count = text.size() + 1;
        if (!step || *step > UINT32_MAX)
            return std::nullopt;
        bias = Adapt(*step, count, at == 0);
        at += *step;
        code += at / count;
        at %= count;
        if (code > 0x10FFFF)
            return std::nullopt;
        text.insert(static_cast<std::size_t>(at), 1, static_cast<char32_t>(code));
        ++at;
    }
    return text;
}
