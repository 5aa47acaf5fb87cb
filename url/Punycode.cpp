#include "url/Punycode.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace
{

// The parameters of RFC 3492, section 5.
constexpr std::uint32_t kBase = 36;
constexpr std::uint32_t kMinimumThreshold = 1;
constexpr std::uint32_t kMaximumThreshold = 26;
constexpr std::uint32_t kSkew = 38;
constexpr std::uint32_t kDamp = 700;
constexpr std::uint32_t kInitialBias = 72;
constexpr char32_t kInitialCode = 0x80;

char Digit(std::uint32_t value)
{
    return "abcdefghijklmnopqrstuvwxyz0123456789"[value];
}

std::uint32_t Adapt(std::uint32_t delta, std::uint32_t count, bool first)
{
    delta = first ? delta / kDamp : delta / 2;
    delta += delta / count;
    std::uint32_t bias = 0;
    for (; delta > (kBase - kMinimumThreshold) * kMaximumThreshold / 2; bias += kBase)
        delta /= kBase - kMinimumThreshold;
    return bias + (kBase - kMinimumThreshold + 1) * delta / (delta + kSkew);
}

void AppendNumber(std::string& result, std::uint32_t number, std::uint32_t bias)
{
    for (std::uint32_t position = kBase;; position += kBase)
    {
        const std::uint32_t threshold =
            position <= bias ? kMinimumThreshold : std::clamp(position - bias, kMinimumThreshold, kMaximumThreshold);
        if (number < threshold)
        {
            result += Digit(number);
            return;
        }
        result += Digit(threshold + (number - threshold) % (kBase - threshold));
        number = (number - threshold) / (kBase - threshold);
    }
}

} // namespace

std::optional<std::string> EncodePunycode(std::u32string_view text)
{
    std::string result;
    for (const char32_t code : text)
        if (code < kInitialCode)
            result += static_cast<char>(code);
    const auto basic = static_cast<std::uint32_t>(result.size());
    if (basic != 0)
        result += '-';
    std::uint32_t handled = basic;
    std::uint32_t bias = kInitialBias;
    std::uint64_t delta = 0;
    char32_t code = kInitialCode;
    while (handled < text.size())
    {
        char32_t next = std::numeric_limits<char32_t>::max();
        for (const char32_t candidate : text)
            next = candidate >= code ? std::min(next, candidate) : next;
        delta += std::uint64_t{next - code} * (handled + 1);
        code = next;
        for (const char32_t candidate : text)
        {
            delta += candidate < code ? 1 : 0;
            if (delta > std::numeric_limits<std::uint32_t>::max())
                return std::nullopt;
            if (candidate == code)
            {
                AppendNumber(result, static_cast<std::uint32_t>(delta), bias);
                bias = Adapt(static_cast<std::uint32_t>(delta), handled + 1, handled == basic);
                delta = 0;
                ++handled;
            }
        }
        ++delta;
        ++code;
    }
    return result;
}
