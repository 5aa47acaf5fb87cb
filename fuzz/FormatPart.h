#pragma once

#include "fuzz/Numbers.h"
#include "platform/FormatConversion.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// A format with at most one conversion, which ends it, and the numbers that stand for the conversion's asterisks.
template <class Char>
struct FormatPart
{
    /// Takes a part from the front of a format, which is not empty and holds no terminator.
    FormatPart(std::basic_string_view<Char>& format, Numbers& numbers)
    {
        plain = std::min(format.find(Char{'%'}), format.size());
        const std::basic_string<Char> rest(format.substr(plain));
        std::size_t length = plain;
        if (!rest.empty())
        {
            const Platform::ConversionReader reader(rest.c_str() + 1, [&] {
                stars.push_back(static_cast<int>(numbers.Next()));
                return stars.back();
            });
            conversion = reader.Conversion();
            length += std::min(static_cast<std::size_t>(reader.At() - rest.c_str()) + 1, rest.size());
        }
        text = format.substr(0, length);
        format.remove_prefix(length);
    }

    /// Calls `use(stars..., value...)`.
    template <class Use, class... Value>
    void Call(Use use, Value... value) const
    {
        switch (stars.size())
        {
        case 0:
            return use(value...);
        case 1:
            return use(stars[0], value...);
        default:
            return use(stars[0], stars[1], value...);
        }
    }

    std::basic_string<Char> text;
    std::size_t plain = 0; // characters before the conversion
    Platform::FormatConversion conversion;
    std::vector<int> stars;
};
