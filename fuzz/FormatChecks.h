#pragma once

#include "fuzz/FormatPart.h"
#include "fuzz/MemoryLog.h"
#include "fuzz/Target.h"
#include "platform/Format.h"
#include "platform/Text.h"

#include <array>
#include <cstdarg>
#include <cstdio>
#include <optional>
#include <utility>

/// What holds for every format and its arguments.
namespace FormatChecks
{

inline constexpr std::size_t kRoom = 0x20000; // the log's longest message, with its terminator

template <class Char>
int Print(Char* buffer, std::size_t size, const Char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int length = Platform::Format(buffer, size, format, arguments);
    va_end(arguments);
    return length;
}

/// The text, or nothing where there is not enough room. Buffers have the exact size, so that a sanitizer sees what is
/// written beyond them.
template <class Char, class... Arguments>
std::optional<std::basic_string<Char>> Format(const Char* format, Arguments... arguments)
{
    static std::vector<Char> room(kRoom);
    const int length = Print(room.data(), room.size(), format, arguments...);
    Require(length >= -1 && length < static_cast<int>(kRoom), "a length is that of a text that fits");
    if (length < 0)
    {
        std::vector<Char> small(16);
        Require(Print(small.data(), small.size(), format, arguments...) == -1, "what does not fit fits no less room");
        return std::nullopt;
    }
    const auto size = static_cast<std::size_t>(length);
    const std::basic_string<Char> text(room.data(), size);
    Require(room[size] == 0, "a text is terminated");
    std::vector<Char> exact(size + 1);
    Require(Print(exact.data(), exact.size(), format, arguments...) == length, "a text fits into its own room");
    Require(std::equal(text.begin(), text.end(), exact.begin()), "and is the same there");
    std::vector<Char> tight(size);
    Require(Print(tight.data(), tight.size(), format, arguments...) == -1, "a text fits into no less");
    return text;
}

/// What a log line of this text ends with.
inline std::u16string LineEnd(const std::wstring& text)
{
    std::u16string units(2 * text.size(), u'\0');
    units.resize(Platform::ToUtf16(text, units.data()));
    return units + u"\r\n";
}

template <class... Arguments>
std::optional<std::wstring> Log(MemoryLog& log, const wchar_t* format, Arguments... arguments)
{
    log.Log(NlOrbLogging::Error, format, arguments...);
    return Format(format, arguments...);
}

template <class... Arguments>
std::optional<std::wstring> Log(MemoryLog& log, const char* format, Arguments... arguments)
{
    log.LogA(NlOrbLogging::Error, format, arguments...);
    const auto text = Format(format, arguments...);
    return text ? std::optional(Platform::FromAnsi(*text)) : std::nullopt;
}

/// A message goes to the log as it is printed elsewhere, or as a complaint where it is longer than the log takes.
template <class Char, class... Arguments>
void RequireLogged(const Char* format, Arguments... arguments)
{
    MemoryLog& log = MemoryLog::Get();
    const auto text = Log(log, format, arguments...);
    const std::u16string line = log.Take();
    const std::u16string end = text ? LineEnd(*text) : u"\r\n";
    Require(line.size() > end.size() && line.compare(line.size() - end.size(), end.size(), end) == 0,
            "a line ends with its message");
    Require(text || line.find(u"NL_ORB_LOG failure: too large message") != std::u16string::npos,
            "a message that is too long is told of");
}

/// What the C library makes of the same conversion; it knows numbers of these sizes in the same way.
template <class Value>
std::string PrintAsC(const Platform::FormatConversion& conversion, Value value)
{
    std::string format = "%";
    for (const auto& [set, flag] :
         {std::pair{conversion.left, '-'}, std::pair{conversion.plus, '+'}, std::pair{conversion.blank, ' '},
          std::pair{conversion.alternate, '#'}, std::pair{conversion.zero, '0'}})
        format.append(set ? 1 : 0, flag);
    format += conversion.size == Platform::FormatSize::Wide    ? "*.*ll"
              : conversion.size == Platform::FormatSize::Short ? "*.*h"
                                                               : "*.*";
    format += conversion.type;
    std::array<char, 4096> room;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral" // composed above, for one value of this type
    std::snprintf(room.data(), room.size(), format.c_str(), conversion.width, conversion.precision, value);
#pragma GCC diagnostic pop
    return room.data();
}

template <class Char, class Value, class... Arguments>
void RequireAsC(const FormatPart<Char>& part, Value value, Arguments... arguments)
{
    const Platform::FormatConversion& conversion = part.conversion;
    constexpr int kReasonable = 2000;
    const bool isDisputed = conversion.alternate && conversion.type == 'o'; // not every C library keeps to the standard
    if (conversion.width > kReasonable || conversion.precision > kReasonable || isDisputed ||
        conversion.size == Platform::FormatSize::Pointer)
        return;
    const auto text = Format(part.text.c_str() + part.plain, arguments...);
    const std::string expected = PrintAsC(conversion, value);
    Require(text && std::equal(text->begin(), text->end(), expected.begin(), expected.end()),
            "a number is printed as C prints it");
}

} // namespace FormatChecks
