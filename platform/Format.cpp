#include "platform/Format.h"

#include "platform/FormatConversion.h"
#include "platform/FormatFloat.h"
#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>

namespace Platform
{

namespace
{

/// One call of Format(). A number is at most 2^31 - 1 wide, as the result is an int.
template <class Char>
class Formatter
{
public:
    Formatter(Char* buffer, std::size_t size, va_list arguments) : m_begin(buffer), m_at(buffer), m_end(buffer + size)
    {
        va_copy(m_arguments, arguments);
    }
    ~Formatter() { va_end(m_arguments); }
    Formatter(const Formatter&) = delete;
    Formatter& operator=(const Formatter&) = delete;

    int Run(const Char* format)
    {
        while (*format != 0 && m_fits)
            if (*format == '%')
                format = Convert(format);
            else
                Put(*format++);
        Put(Char{0});
        return m_fits ? static_cast<int>(m_at - m_begin) - 1 : -1;
    }

private:
    const Char* Convert(const Char* percent);
    bool PutConversion(const FormatConversion& conversion);
    void PutText(const FormatConversion& conversion);
    void PutCharacter(const FormatConversion& conversion);
    void PutInteger(const FormatConversion& conversion);
    void PutFloat(const FormatConversion& conversion);
    template <class Source>
    void PutText(const FormatConversion& conversion, const Source* text);
    void PutDigits(const FormatConversion& conversion, std::uint64_t magnitude, const char* prefix, unsigned base);

    bool IsWide(const FormatConversion& conversion) const;
    std::int64_t NextSigned(FormatSize size);
    std::uint64_t NextUnsigned(FormatSize size);

    void Put(Char character)
    {
        if (m_at < m_end)
            *m_at++ = character;
        else
            m_fits = false;
    }

    template <class Source>
    void Put(const Source* text, std::size_t length)
    {
        if (length >= static_cast<std::size_t>(m_end - m_at))
        {
            m_fits = false;
            return;
        }
        m_at = std::transform(text, text + length, m_at, [](Source unit) { return static_cast<Char>(unit); });
    }

    void Fill(char character, int count)
    {
        if (count >= m_end - m_at)
            m_fits = false;
        else if (count > 0)
            m_at = std::fill_n(m_at, count, static_cast<Char>(character));
    }

    /// Blanks around `length` characters, which `put` writes.
    template <class Function>
    void Pad(const FormatConversion& conversion, int length, Function put)
    {
        const int blanks = conversion.width - length;
        if (!conversion.left)
            Fill(' ', blanks);
        put();
        if (conversion.left)
            Fill(' ', blanks);
    }

    Char* const m_begin;
    Char* m_at;
    Char* const m_end;
    va_list m_arguments;
    bool m_fits = true;
};

template <class Char>
const Char* Formatter<Char>::Convert(const Char* percent)
{
    const ConversionReader reader(percent + 1, [this] { return va_arg(m_arguments, int); });
    if (PutConversion(reader.Conversion()))
        return reader.At() + 1;
    Put(percent, static_cast<std::size_t>(reader.At() - percent));
    return reader.At();
}

/// False: there is no such conversion.
template <class Char>
bool Formatter<Char>::PutConversion(const FormatConversion& conversion)
{
    switch (conversion.type)
    {
    case '%':
        Put(Char{'%'});
        return true;
    case 's':
    case 'S':
        PutText(conversion);
        return true;
    case 'c':
    case 'C':
        PutCharacter(conversion);
        return true;
    case 'd':
    case 'i':
    case 'u':
    case 'x':
    case 'X':
    case 'o':
    case 'p':
        PutInteger(conversion);
        return true;
    case 'e':
    case 'E':
    case 'f':
    case 'F':
    case 'g':
    case 'G':
    case 'a':
    case 'A':
        PutFloat(conversion);
        return true;
    case 'n':
        static_cast<void>(va_arg(m_arguments, void*));
        return true;
    default:
        return false;
    }
}

/// Lower-case conversions take the format's own kind of text, upper-case ones the other; a size overrides both.
template <class Char>
bool Formatter<Char>::IsWide(const FormatConversion& conversion) const
{
    switch (conversion.size)
    {
    case FormatSize::Short:
        return false;
    case FormatSize::Long:
        return true;
    default:
        return std::is_same_v<Char, wchar_t> == (conversion.type >= 'a');
    }
}

template <class Char>
void Formatter<Char>::PutText(const FormatConversion& conversion)
{
    if (IsWide(conversion))
    {
        const auto* text = va_arg(m_arguments, const wchar_t*);
        PutText(conversion, text != nullptr ? text : L"(null)");
    }
    else
    {
        const auto* text = va_arg(m_arguments, const char*);
        PutText(conversion, text != nullptr ? text : "(null)");
    }
}

template <class Char>
template <class Source>
void Formatter<Char>::PutText(const FormatConversion& conversion, const Source* text)
{
    // A precision may stand for a missing terminator.
    const auto length = conversion.precision < 0
                            ? std::char_traits<Source>::length(text)
                            : static_cast<std::size_t>(std::find(text, text + conversion.precision, Source{0}) - text);
    if (length > static_cast<std::size_t>(std::numeric_limits<int>::max()))
    {
        m_fits = false;
        return;
    }
    const bool same = std::is_same_v<Source, Char> ||
                      std::all_of(text, text + length, [](Source unit) { return unit >= 0 && unit < 0x80; });
    if (same)
    {
        Pad(
            conversion, static_cast<int>(length), [&] { Put(text, length); });
    }
    else if constexpr (std::is_same_v<Source, char>)
    {
        const std::wstring converted = FromAnsi({text, length});
        Pad(conversion, static_cast<int>(converted.size()), [&] { Put(converted.data(), converted.size()); });
    }
    else
    {
        const std::string converted = ToAnsi({text, length});
        Pad(conversion, static_cast<int>(converted.size()), [&] { Put(converted.data(), converted.size()); });
    }
}

template <class Char>
void Formatter<Char>::PutCharacter(const FormatConversion& conversion)
{
    const int value = va_arg(m_arguments, int);
    if (IsWide(conversion) && !std::is_same_v<Char, wchar_t>)
    {
        const std::string converted = ToAnsi(std::wstring(1, static_cast<wchar_t>(value)));
        Pad(conversion, static_cast<int>(converted.size()), [&] { Put(converted.data(), converted.size()); });
        return;
    }
    const Char character = IsWide(conversion) ? static_cast<Char>(value) : static_cast<Char>(value & 0xFF);
    Pad(conversion, 1, [&] { Put(&character, 1); });
}

template <class Char>
std::int64_t Formatter<Char>::NextSigned(FormatSize size)
{
    switch (size)
    {
    case FormatSize::Short:
        return static_cast<short>(va_arg(m_arguments, int));
    case FormatSize::Wide:
        return va_arg(m_arguments, long long);
    case FormatSize::Pointer:
        return va_arg(m_arguments, std::ptrdiff_t);
    default:
        return va_arg(m_arguments, int);
    }
}

template <class Char>
std::uint64_t Formatter<Char>::NextUnsigned(FormatSize size)
{
    switch (size)
    {
    case FormatSize::Short:
        return static_cast<unsigned short>(va_arg(m_arguments, unsigned));
    case FormatSize::Wide:
        return va_arg(m_arguments, unsigned long long);
    case FormatSize::Pointer:
        return va_arg(m_arguments, std::size_t);
    default:
        return va_arg(m_arguments, unsigned);
    }
}

template <class Char>
void Formatter<Char>::PutInteger(const FormatConversion& conversion)
{
    switch (conversion.type)
    {
    case 'd':
    case 'i': {
        const std::int64_t value = NextSigned(conversion.size);
        const char* sign = value < 0 ? "-" : conversion.plus ? "+" : conversion.blank ? " " : "";
        const auto bits = static_cast<std::uint64_t>(value);
        PutDigits(conversion, value < 0 ? 0 - bits : bits, sign, 10);
        return;
    }
    case 'p': {
        FormatConversion pointer = conversion;
        pointer.type = 'X';
        pointer.precision = 2 * sizeof(void*);
        PutDigits(pointer, reinterpret_cast<std::uintptr_t>(va_arg(m_arguments, void*)), "", 16);
        return;
    }
    case 'u':
        PutDigits(conversion, NextUnsigned(conversion.size), "", 10);
        return;
    case 'o':
        PutDigits(conversion, NextUnsigned(conversion.size), "", 8);
        return;
    default: {
        const std::uint64_t value = NextUnsigned(conversion.size);
        const bool prefixed = conversion.alternate && value != 0;
        PutDigits(conversion, value, !prefixed ? "" : conversion.type == 'x' ? "0x" : "0X", 16);
    }
    }
}

template <class Char>
void Formatter<Char>::PutDigits(const FormatConversion& conversion, std::uint64_t magnitude, const char* prefix,
                                unsigned base)
{
    char digits[22]; // 64 bits in octal
    char* const end = digits + sizeof(digits);
    char* begin = end;
    const char* const set = conversion.type == 'X' ? "0123456789ABCDEF" : "0123456789abcdef";
    const auto convert = [&](auto divisor) {
        for (; magnitude != 0; magnitude /= divisor())
            *--begin = set[magnitude % divisor()];
    };
    if (base == 10)
        convert(std::integral_constant<unsigned, 10>());
    else
        convert([base] { return base; });
    const auto count = static_cast<int>(end - begin);
    const auto prefixLength = static_cast<int>(std::char_traits<char>::length(prefix));
    const int fewest = base == 8 && conversion.alternate ? 1 : 0; // the alternate octal form begins with a zero
    int zeros = std::max(fewest, (conversion.precision < 0 ? 1 : conversion.precision) - count);
    if (conversion.zero && !conversion.left && conversion.precision < 0)
        zeros = std::max(zeros, conversion.width - prefixLength - count);
    if (zeros >= m_end - m_at)
    {
        m_fits = false;
        return;
    }
    Pad(conversion, prefixLength + zeros + count, [&] {
        Put(prefix, static_cast<std::size_t>(prefixLength));
        Fill('0', zeros);
        Put(begin, static_cast<std::size_t>(count));
    });
}

template <class Char>
void Formatter<Char>::PutFloat(const FormatConversion& conversion)
{
    const auto room = static_cast<std::size_t>(m_end - m_at);
    const std::string text = conversion.size == FormatSize::LongDouble
                                 ? FormatFloat(conversion, va_arg(m_arguments, long double), room)
                                 : FormatFloat(conversion, va_arg(m_arguments, double), room);
    m_fits = m_fits && !text.empty();
    Put(text.data(), text.size());
}

} // namespace

int Format(wchar_t* buffer, std::size_t size, const wchar_t* format, va_list arguments)
{
    return Formatter<wchar_t>(buffer, size, arguments).Run(format);
}

int Format(char* buffer, std::size_t size, const char* format, va_list arguments)
{
    return Formatter<char>(buffer, size, arguments).Run(format);
}

int FormatTo(wchar_t* buffer, std::size_t size, const wchar_t* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int length = Format(buffer, size, format, arguments);
    va_end(arguments);
    return length;
}

std::wstring FormatText(const wchar_t* format, ...)
{
    std::array<wchar_t, 4096> buffer;
    va_list arguments;
    va_start(arguments, format);
    const int length = Format(buffer.data(), buffer.size(), format, arguments);
    va_end(arguments);
    return length > 0 ? std::wstring(buffer.data(), static_cast<std::size_t>(length)) : std::wstring();
}

} // namespace Platform
