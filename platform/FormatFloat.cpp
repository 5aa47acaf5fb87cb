#include "platform/FormatFloat.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <utility>

namespace Platform
{

namespace
{

/// No number of these types has more; %g leaves out the zeros that would follow.
constexpr int MostDigits = 16'384;

template <class Value>
std::string Print(const FormatConversion& conversion, const char* type, Value value, std::size_t limit)
{
    const bool hasEveryDigit =
        std::isfinite(value) && (conversion.alternate || (conversion.type != 'g' && conversion.type != 'G'));
    const int precision = hasEveryDigit ? conversion.precision : std::min(conversion.precision, MostDigits);
    // Asked for more digits than there is room for, the C library would take minutes to count them.
    if (conversion.width >= 0 && static_cast<std::size_t>(conversion.width) >= limit)
        return {};
    if (hasEveryDigit && precision >= 0 && static_cast<std::size_t>(precision) >= limit)
        return {};
    std::string format = "%";
    for (const auto& [set, flag] :
         {std::pair{conversion.left, '-'}, std::pair{conversion.plus, '+'}, std::pair{conversion.blank, ' '},
          std::pair{conversion.alternate, '#'}, std::pair{conversion.zero, '0'}})
        format.append(set ? 1 : 0, flag);
    format.append("*.*").append(type);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral" // composed above, for one value of this type
    const auto print = [&](char* target, std::size_t size) {
        return std::snprintf(target, size, format.c_str(), conversion.width, precision, value);
    };
#pragma GCC diagnostic pop
    const int length = print(nullptr, 0);
    if (length < 0 || static_cast<std::size_t>(length) >= limit)
        return {};
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    print(text.data(), text.size());
    text.pop_back();
    return text;
}

} // namespace

std::string FormatFloat(const FormatConversion& conversion, double value, std::size_t limit)
{
    const std::array<char, 2> text{conversion.type, '\0'};
    return Print(conversion, text.data(), value, limit);
}

std::string FormatFloat(const FormatConversion& conversion, long double value, std::size_t limit)
{
    const std::array<char, 3> text{'L', conversion.type, '\0'};
    return Print(conversion, text.data(), value, limit);
}

} // namespace Platform
