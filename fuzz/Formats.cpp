// Formats of any kind with hostile arguments, as they are and on their way to the log. The first line is a format, the
// second one has its numbers, and what follows is its text.

#include "fuzz/FormatChecks.h"

#include <cstring>

namespace
{

using Platform::FormatConversion;
using Platform::FormatSize;

/// A text in memory of its own size, without a terminator where the precision does without.
template <class Char>
std::vector<Char> TextArgument(const std::basic_string<Char>& text, int precision)
{
    const bool terminated = precision < 0 || static_cast<std::size_t>(precision) > text.size();
    const auto* const end = text.c_str() + (terminated ? text.size() + 1 : static_cast<std::size_t>(precision));
    return std::vector<Char>(text.c_str(), end);
}

/// What a conversion takes as text: see platform/Format.h.
template <class Char>
bool TakesWideText(const FormatConversion& conversion)
{
    const bool isOwn = conversion.type == 's';
    return conversion.size == FormatSize::Long ||
           (conversion.size != FormatSize::Short && isOwn == std::is_same_v<Char, wchar_t>);
}

template <class Char, class Use>
void CallWithText(const FormatPart<Char>& part, const std::string& text, Use use)
{
    const auto call = [&](const auto& argument) {
        const auto characters = TextArgument(argument, part.conversion.precision);
        part.Call(use, text.empty() ? nullptr : characters.data());
    };
    TakesWideText<Char>(part.conversion) ? call(Platform::FromUtf8(text)) : call(text);
}

template <class Wide, class Pointer, class Default, class Char, class Use>
void CallWithInteger(const FormatPart<Char>& part, std::int64_t number, Use use)
{
    const auto call = [&](auto value) {
        part.Call(use, value);
        part.Call([&](auto... arguments) { FormatChecks::RequireAsC(part, value, arguments...); }, value);
    };
    switch (part.conversion.size)
    {
    case FormatSize::Wide:
        return call(static_cast<Wide>(number));
    case FormatSize::Pointer:
        return part.Call(use, static_cast<Pointer>(number));
    default:
        return call(static_cast<Default>(number));
    }
}

template <class Char, class Use>
void CallWithFloat(const FormatPart<Char>& part, std::int64_t number, Use use)
{
    double value = 0;
    static_assert(sizeof(value) == sizeof(number));
    std::memcpy(&value, &number, sizeof(value));
    if (part.conversion.size == FormatSize::LongDouble)
        part.Call(use, static_cast<long double>(value));
    else
        part.Call(use, value);
}

template <class Char>
void CheckPart(const FormatPart<Char>& part, Numbers& numbers, const std::string& text)
{
    const auto check = [&](auto... arguments) { FormatChecks::RequireLogged(part.text.c_str(), arguments...); };
    int untouched = 42;
    switch (part.conversion.type)
    {
    case 's':
    case 'S':
        return CallWithText(part, text, check);
    case 'c':
    case 'C':
        return part.Call(check, static_cast<int>(numbers.Next()));
    case 'd':
    case 'i':
        return CallWithInteger<long long, std::ptrdiff_t, int>(part, numbers.Next(), check);
    case 'u':
    case 'x':
    case 'X':
    case 'o':
        return CallWithInteger<unsigned long long, std::size_t, unsigned>(part, numbers.Next(), check);
    case 'e':
    case 'E':
    case 'f':
    case 'F':
    case 'g':
    case 'G':
    case 'a':
    case 'A':
        return CallWithFloat(part, numbers.Next(), check);
    case 'p':
        return part.Call(check, static_cast<const void*>(text.c_str()));
    case 'n':
        part.Call(check, &untouched);
        return Require(untouched == 42, "a format writes nothing into its arguments");
    default:
        return part.Call(check);
    }
}

template <class Char>
void CheckFormat(std::basic_string_view<Char> format, Numbers numbers, const std::string& text)
{
    while (!format.empty())
        CheckPart(FormatPart<Char>(format, numbers), numbers, text);
}

/// Up to the first terminator: behind it nobody reads.
std::string_view AsCText(std::string_view text)
{
    return text.substr(0, text.find('\0'));
}

std::string_view TakeLine(std::string_view& text)
{
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return AsCText(line);
}

const Target g_target("formats", [](std::string_view input) {
    const std::string_view format = TakeLine(input);
    const Numbers numbers(TakeLine(input));
    const std::string text(AsCText(input));
    const std::wstring wideFormat = Platform::FromUtf8(format);
    CheckFormat(format, numbers, text);
    CheckFormat<wchar_t>(wideFormat, numbers, text);
});

} // namespace
