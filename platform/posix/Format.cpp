#include "platform/Format.h"

#include "platform/Text.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>

namespace Platform
{

namespace
{

enum class Size
{
    Default,
    Short,   // h: narrow text
    Long,    // l, w: wide text; integers of 32 bits, as a Windows long has
    Wide,    // ll, I64
    Pointer, // I
    LongDouble
};

struct Conversion
{
    bool left = false;
    bool plus = false;
    bool blank = false;
    bool alternate = false;
    bool zero = false;
    int width = 0;
    int precision = -1;
    Size size = Size::Default;
    char type = '\0';
};

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
        {
            if (*format == '%')
            {
                format = Convert(format);
            }
            else
            {
                Put(*format++);
            }
        }
        Put(Char{0});
        return m_fits ? static_cast<int>(m_at - m_begin) - 1 : -1;
    }

private:
    const Char* Convert(const Char* percent);
    const Char* ReadFlags(const Char* at, Conversion& conversion);
    const Char* ReadNumber(const Char* at, int& number);
    const Char* ReadSize(const Char* at, Size& size);
    bool PutConversion(const Conversion& conversion);
    void PutText(const Conversion& conversion);
    void PutCharacter(const Conversion& conversion);
    void PutInteger(const Conversion& conversion);
    void PutFloat(const Conversion& conversion);
    template <class Source>
    void PutText(const Conversion& conversion, const Source* text);
    void PutDigits(const Conversion& conversion, std::uint64_t magnitude, const char* prefix, unsigned base);

    bool IsWide(const Conversion& conversion) const;
    std::int64_t NextSigned(Size size);
    std::uint64_t NextUnsigned(Size size);

    void Put(Char character)
    {
        if (m_at < m_end)
        {
            *m_at++ = character;
        }
        else
        {
            m_fits = false;
        }
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
        {
            m_fits = false;
        }
        else if (count > 0)
        {
            m_at = std::fill_n(m_at, count, static_cast<Char>(character));
        }
    }

    /// Blanks around `length` characters, which `put` writes.
    template <class Function>
    void Pad(const Conversion& conversion, int length, Function put)
    {
        const int blanks = conversion.width - length;
        if (!conversion.left)
        {
            Fill(' ', blanks);
        }
        put();
        if (conversion.left)
        {
            Fill(' ', blanks);
        }
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
    Conversion conversion;
    const Char* at = ReadFlags(percent + 1, conversion);
    at = ReadNumber(at, conversion.width);
    if (conversion.width < 0)
    {
        conversion.left = true;
        conversion.width = conversion.width == std::numeric_limits<int>::min() ? 0 : -conversion.width;
    }
    if (*at == '.')
    {
        conversion.precision = 0;
        at = ReadNumber(at + 1, conversion.precision);
    }
    at = ReadSize(at, conversion.size);
    if (*at > 0 && *at < 0x7F)
    {
        conversion.type = static_cast<char>(*at);
        if (PutConversion(conversion))
        {
            return at + 1;
        }
    }
    Put(percent, static_cast<std::size_t>(at - percent));
    return at;
}

template <class Char>
const Char* Formatter<Char>::ReadFlags(const Char* at, Conversion& conversion)
{
    for (;; ++at)
    {
        switch (*at)
        {
        case '-':
            conversion.left = true;
            break;
        case '+':
            conversion.plus = true;
            break;
        case ' ':
            conversion.blank = true;
            break;
        case '#':
            conversion.alternate = true;
            break;
        case '0':
            conversion.zero = true;
            break;
        default:
            return at;
        }
    }
}

template <class Char>
const Char* Formatter<Char>::ReadNumber(const Char* at, int& number)
{
    if (*at == '*')
    {
        number = va_arg(m_arguments, int);
        return at + 1;
    }
    for (; *at >= '0' && *at <= '9'; ++at)
    {
        const std::int64_t next = std::int64_t{number} * 10 + (*at - '0');
        number = static_cast<int>(std::min<std::int64_t>(next, std::numeric_limits<int>::max()));
    }
    return at;
}

template <class Char>
const Char* Formatter<Char>::ReadSize(const Char* at, Size& size)
{
    switch (*at)
    {
    case 'h':
        size = Size::Short;
        return at + 1;
    case 'w':
        size = Size::Long;
        return at + 1;
    case 'L':
        size = Size::LongDouble;
        return at + 1;
    case 'l':
        size = at[1] == 'l' ? Size::Wide : Size::Long;
        return at + (at[1] == 'l' ? 2 : 1);
    case 'I':
        if (at[1] == '6' && at[2] == '4')
        {
            size = Size::Wide;
            return at + 3;
        }
        if (at[1] == '3' && at[2] == '2')
        {
            return at + 3;
        }
        size = Size::Pointer;
        return at + 1;
    default:
        return at;
    }
}

/// False: there is no such conversion.
template <class Char>
bool Formatter<Char>::PutConversion(const Conversion& conversion)
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
bool Formatter<Char>::IsWide(const Conversion& conversion) const
{
    switch (conversion.size)
    {
    case Size::Short:
        return false;
    case Size::Long:
        return true;
    default:
        return std::is_same_v<Char, wchar_t> == (conversion.type >= 'a');
    }
}

template <class Char>
void Formatter<Char>::PutText(const Conversion& conversion)
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
void Formatter<Char>::PutText(const Conversion& conversion, const Source* text)
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
        Pad(conversion, static_cast<int>(length), [&] { Put(text, length); });
    }
    else if constexpr (std::is_same_v<Source, char>)
    {
        const std::wstring converted = FromAnsi({text, length});
        Pad(conversion, static_cast<int>(converted.size()), [&] { Put(converted.data(), converted.size()); });
    }
    else
    {
        const std::string converted = ToUtf8({text, length});
        Pad(conversion, static_cast<int>(converted.size()), [&] { Put(converted.data(), converted.size()); });
    }
}

template <class Char>
void Formatter<Char>::PutCharacter(const Conversion& conversion)
{
    const int value = va_arg(m_arguments, int);
    if (IsWide(conversion) && !std::is_same_v<Char, wchar_t>)
    {
        const std::string converted = ToUtf8(std::wstring(1, static_cast<wchar_t>(value)));
        Pad(conversion, static_cast<int>(converted.size()), [&] { Put(converted.data(), converted.size()); });
        return;
    }
    const Char character = IsWide(conversion) ? static_cast<Char>(value) : static_cast<Char>(value & 0xFF);
    Pad(conversion, 1, [&] { Put(&character, 1); });
}

template <class Char>
std::int64_t Formatter<Char>::NextSigned(Size size)
{
    switch (size)
    {
    case Size::Short:
        return static_cast<short>(va_arg(m_arguments, int));
    case Size::Wide:
        return va_arg(m_arguments, long long);
    case Size::Pointer:
        return va_arg(m_arguments, std::ptrdiff_t);
    default:
        return va_arg(m_arguments, int);
    }
}

template <class Char>
std::uint64_t Formatter<Char>::NextUnsigned(Size size)
{
    switch (size)
    {
    case Size::Short:
        return static_cast<unsigned short>(va_arg(m_arguments, unsigned));
    case Size::Wide:
        return va_arg(m_arguments, unsigned long long);
    case Size::Pointer:
        return va_arg(m_arguments, std::size_t);
    default:
        return va_arg(m_arguments, unsigned);
    }
}

template <class Char>
void Formatter<Char>::PutInteger(const Conversion& conversion)
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
        Conversion pointer = conversion;
        pointer.type = 'X';
        pointer.precision = 2 * sizeof(void*);
        PutDigits(pointer, reinterpret_cast<std::uintptr_t>(va_arg(m_arguments, void*)), "", 16);
        return;
    }
    case 'u':
        PutDigits(conversion, NextUnsigned(conversion.size), "", 10);
        return;
    case 'o':
        PutDigits(conversion, NextUnsigned(conversion.size), conversion.alternate ? "0" : "", 8);
        return;
    default: {
        const std::uint64_t value = NextUnsigned(conversion.size);
        const bool prefixed = conversion.alternate && value != 0;
        PutDigits(conversion, value, !prefixed ? "" : conversion.type == 'x' ? "0x" : "0X", 16);
    }
    }
}

template <class Char>
void Formatter<Char>::PutDigits(const Conversion& conversion, std::uint64_t magnitude, const char* prefix,
                                unsigned base)
{
    char digits[22]; // 64 bits in octal
    char* const end = digits + sizeof(digits);
    char* begin = end;
    const char* const set = conversion.type == 'X' ? "0123456789ABCDEF" : "0123456789abcdef";
    const auto convert = [&](auto divisor) {
        for (; magnitude != 0; magnitude /= divisor())
        {
            *--begin = set[magnitude % divisor()];
        }
    };
    if (base == 10)
    {
        convert(std::integral_constant<unsigned, 10>());
    }
    else
    {
        convert([base] { return base; });
    }
    const auto count = static_cast<int>(end - begin);
    const auto prefixLength = static_cast<int>(std::char_traits<char>::length(prefix));
    int zeros = std::max(0, (conversion.precision < 0 ? 1 : conversion.precision) - count);
    if (conversion.zero && !conversion.left && conversion.precision < 0)
    {
        zeros = std::max(zeros, conversion.width - prefixLength - count);
    }
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
void Formatter<Char>::PutFloat(const Conversion& conversion)
{
    // Asked for more digits than there is room for, the system would take minutes to count them.
    if (conversion.width >= m_end - m_at || conversion.precision >= m_end - m_at)
    {
        m_fits = false;
        return;
    }
    char format[16] = "%";
    char* at = format + 1;
    for (const auto& [set, flag] :
         {std::pair{conversion.left, '-'}, std::pair{conversion.plus, '+'}, std::pair{conversion.blank, ' '},
          std::pair{conversion.alternate, '#'}, std::pair{conversion.zero, '0'}})
    {
        if (set)
        {
            *at++ = flag;
        }
    }
    const bool isLong = conversion.size == Size::LongDouble;
    for (const char unit : {'*', '.', '*', isLong ? 'L' : conversion.type, isLong ? conversion.type : '\0'})
    {
        *at++ = unit;
    }
    const auto print = [&](char* target, std::size_t size, auto value) {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral" // composed above, for one value of this type
        return std::snprintf(target, size, format, conversion.width, conversion.precision, value);
#pragma GCC diagnostic pop
    };
    const auto put = [&](auto value) {
        const int length = print(nullptr, 0, value);
        if (length < 0 || length >= m_end - m_at)
        {
            m_fits = false;
            return;
        }
        std::string text(static_cast<std::size_t>(length) + 1, '\0');
        print(text.data(), text.size(), value);
        Put(text.data(), static_cast<std::size_t>(length));
    };
    if (isLong)
    {
        put(va_arg(m_arguments, long double));
    }
    else
    {
        put(va_arg(m_arguments, double));
    }
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

} // namespace Platform
