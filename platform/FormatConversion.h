#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

namespace Platform
{

/// The size that a conversion of a format names.
enum class FormatSize
{
    Default,
    Short,   // h: narrow text
    Long,    // l, w: wide text; integers of 32 bits, as a Windows long has
    Wide,    // ll, I64
    Pointer, // I
    LongDouble
};

/// One conversion of a format, from the percent sign to its type.
struct FormatConversion
{
    bool left = false;
    bool plus = false;
    bool blank = false;
    bool alternate = false;
    bool zero = false;
    int width = 0;
    int precision = -1;
    FormatSize size = FormatSize::Default;
    char type = '\0'; // the letter, null for what cannot be one
};

/// Reads a conversion up to its type, where `At()` stands then. `nextInt` gives the argument that a "*" stands for.
template <class Char, class NextInt>
class ConversionReader
{
public:
    ConversionReader(const Char* at, NextInt nextInt) : m_at(at), m_nextInt(nextInt)
    {
        ReadFlags();
        m_conversion.width = ReadNumber();
        if (m_conversion.width < 0)
        {
            m_conversion.left = true;
            m_conversion.width = std::max(m_conversion.width, -std::numeric_limits<int>::max());
            m_conversion.width = -m_conversion.width;
        }
        if (*m_at == '.')
        {
            ++m_at;
            m_conversion.precision = ReadNumber();
        }
        ReadSize();
        m_conversion.type = *m_at > 0 && *m_at < 0x7F ? static_cast<char>(*m_at) : '\0';
    }

    const FormatConversion& Conversion() const { return m_conversion; }
    const Char* At() const { return m_at; }

private:
    void ReadFlags()
    {
        for (;; ++m_at)
        {
            switch (*m_at)
            {
            case '-':
                m_conversion.left = true;
                break;
            case '+':
                m_conversion.plus = true;
                break;
            case ' ':
                m_conversion.blank = true;
                break;
            case '#':
                m_conversion.alternate = true;
                break;
            case '0':
                m_conversion.zero = true;
                break;
            default:
                return;
            }
        }
    }

    int ReadNumber()
    {
        int number = 0;
        if (*m_at == '*')
        {
            ++m_at;
            return m_nextInt();
        }
        for (; *m_at >= '0' && *m_at <= '9'; ++m_at)
        {
            const std::int64_t next = std::int64_t{number} * 10 + (*m_at - '0');
            number = static_cast<int>(std::min<std::int64_t>(next, std::numeric_limits<int>::max()));
        }
        return number;
    }

    void ReadSize()
    {
        switch (*m_at)
        {
        case 'h':
            return Take(FormatSize::Short, 1);
        case 'w':
            return Take(FormatSize::Long, 1);
        case 'L':
            return Take(FormatSize::LongDouble, 1);
        case 'l':
            return m_at[1] == 'l' ? Take(FormatSize::Wide, 2) : Take(FormatSize::Long, 1);
        case 'I':
            if (m_at[1] == '6' && m_at[2] == '4')
                return Take(FormatSize::Wide, 3);
            return m_at[1] == '3' && m_at[2] == '2' ? Take(FormatSize::Long, 3) : Take(FormatSize::Pointer, 1);
        default:
            return;
        }
    }

    void Take(FormatSize size, int characters)
    {
        m_conversion.size = size;
        m_at += characters;
    }

    const Char* m_at;
    NextInt m_nextInt;
    FormatConversion m_conversion;
};

} // namespace Platform
