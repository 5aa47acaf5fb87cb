#pragma once

#include "platform/Ansi.h"
#include "text/FormatConversion.h"

#include <algorithm>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>

namespace Platform
{

/// Prints one format; see Platform::Format().
template <class Char>
class Formatter
{
public:
    Formatter(Char* buffer, std::size_t size, va_list arguments)
        : m_begin(buffer), m_at(buffer), m_end(buffer + (size != 0 ? size - 1 : 0)), m_fits(size != 0)
    {
        va_copy(m_arguments, arguments);
    }
    ~Formatter() { va_end(m_arguments); }
    Formatter(const Formatter&) = delete;
    Formatter& operator=(const Formatter&) = delete;

    /// The length of the text, or -1 when it does not fit with its terminator.
    int Run(const Char* format)
    {
        while (m_fits && *format != 0)
        {
            Char* at = m_at;
            while (*format != 0 && *format != '%' && at != m_end)
                *at++ = *format++;
            m_at = at;
            if (*format == '%')
                format = Convert(format + 1);
            else
                m_fits = *format == 0;
        }
        if (!m_fits)
            return -1;
        *m_at = 0;
        return static_cast<int>(m_at - m_begin);
    }

private:
    /// What follows a percent sign; returns where the format goes on.
    const Char* Convert(const Char* at)
    {
        Text::FormatConversion conversion;
        const Char* const next = Text::ReadConversion(at, conversion);
        switch (conversion.Argument(std::is_same_v<Char, wchar_t>))
        {
        case Text::FormatArgument::Int32:
            if (conversion.type == L'd')
                PutSigned(conversion, va_arg(m_arguments, std::int32_t));
            else
                PutNumber(conversion, va_arg(m_arguments, std::uint32_t), false);
            return next;
        case Text::FormatArgument::Int64:
            if (conversion.type == L'd')
                PutSigned(conversion, va_arg(m_arguments, std::int64_t));
            else
                PutNumber(conversion, va_arg(m_arguments, std::uint64_t), false);
            return next;
        case Text::FormatArgument::WideString:
            PutString(conversion, va_arg(m_arguments, const wchar_t*), L"(null)");
            return next;
        case Text::FormatArgument::NarrowString:
            PutString(conversion, va_arg(m_arguments, const char*), "(null)");
            return next;
        case Text::FormatArgument::Pointer:
            conversion.type = L'X';
            conversion.zero = true;
            conversion.width = 2 * sizeof(void*);
            PutNumber(conversion, reinterpret_cast<std::uintptr_t>(va_arg(m_arguments, void*)), false);
            return next;
        default: // "%%", or what stands for itself
            Put("%", 1);
            return *at == '%' ? at + 1 : at;
        }
    }

    template <class Source>
    void PutString(const Text::FormatConversion& conversion, const Source* text, const Source* null)
    {
        if (!text)
            text = null;
        // A precision may stand for a missing terminator.
        const std::size_t length =
            conversion.precision < 0
                ? std::char_traits<Source>::length(text)
                : static_cast<std::size_t>(std::find(text, text + conversion.precision, Source{0}) - text);
        if constexpr (std::is_same_v<Source, Char>)
            PutPadded(conversion, text, length);
        else if (std::all_of(text, text + length, [](Source unit) { return unit >= 0 && unit < 0x80; }))
            PutPadded(conversion, text, length);
        else if constexpr (std::is_same_v<Source, char>)
            PutConverted(conversion, FromAnsi({text, length}));
        else
            PutConverted(conversion, ToAnsi({text, length}));
    }

    void PutConverted(const Text::FormatConversion& conversion, const std::basic_string<Char>& text)
    {
        PutPadded(conversion, text.data(), text.size());
    }

    template <class Source>
    void PutPadded(const Text::FormatConversion& conversion, const Source* text, std::size_t length)
    {
        const auto width = static_cast<std::size_t>(conversion.width);
        const std::size_t blanks = width > length ? width - length : 0;
        Fill(' ', conversion.left ? 0 : blanks);
        Put(text, length);
        Fill(' ', conversion.left ? blanks : 0);
    }

    template <class Signed>
    void PutSigned(const Text::FormatConversion& conversion, Signed value)
    {
        const auto bits = static_cast<std::make_unsigned_t<Signed>>(value);
        PutNumber(conversion, value < 0 ? 0 - bits : bits, value < 0);
    }

    template <class Unsigned>
    void PutNumber(const Text::FormatConversion& conversion, Unsigned value, bool negative)
    {
        constexpr std::size_t kLongest = 1 + 20; // a sign, and 64 bits
        Char text[kLongest];
        Char* const end = text + kLongest;
        Char* begin = end;
        if (conversion.type == L'x' || conversion.type == L'X')
        {
            const char* const digits = conversion.type == L'x' ? "0123456789abcdef" : "0123456789ABCDEF";
            do
                *--begin = static_cast<Char>(digits[value % 16]);
            while ((value /= 16) != 0);
        }
        else
        {
            do
                *--begin = static_cast<Char>('0' + value % 10);
            while ((value /= 10) != 0);
        }
        const Char sign = negative ? '-' : '+';
        const bool isSigned = negative || conversion.plus;
        if (!conversion.zero || conversion.left)
        {
            if (isSigned)
                *--begin = sign;
            PutPadded(conversion, begin, static_cast<std::size_t>(end - begin));
            return;
        }
        Put(&sign, isSigned ? 1 : 0);
        const auto length = static_cast<std::size_t>(end - begin) + (isSigned ? 1 : 0);
        const auto width = static_cast<std::size_t>(conversion.width);
        Fill('0', width > length ? width - length : 0);
        Put(begin, static_cast<std::size_t>(end - begin));
    }

    template <class Source>
    void Put(const Source* text, std::size_t length)
    {
        if (length > static_cast<std::size_t>(m_end - m_at))
            m_fits = false;
        else
            m_at = std::copy_n(text, length, m_at);
    }

    void Fill(char character, std::size_t count)
    {
        if (count > static_cast<std::size_t>(m_end - m_at))
            m_fits = false;
        else
            m_at = std::fill_n(m_at, count, static_cast<Char>(character));
    }

    Char* const m_begin;
    Char* m_at;
    Char* const m_end;
    bool m_fits;
    va_list m_arguments;
};

} // namespace Platform
