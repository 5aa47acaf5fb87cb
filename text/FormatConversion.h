#pragma once

namespace Text
{

/// What a conversion of a format takes.
enum class FormatArgument
{
    None, ///< It is none of those that Format() knows.
    Int32,
    Int64,
    WideString,
    NarrowString,
    Pointer
};

/// One conversion of a format: flags, width and precision, size and type. A precision is that of a text.
struct FormatConversion
{
    bool left = false;
    bool plus = false;
    bool zero = false;
    int width = 0;
    int precision = -1;      ///< Negative: there is none.
    bool isShort = false;    // h
    bool isLong = false;     // l
    bool isLongLong = false; // ll, I64
    bool isNative = false;   // I: as wide as a pointer
    wchar_t type = 0;

    constexpr FormatArgument Argument(bool wideFormat) const
    {
        const bool isString = type == L's' || type == L'S';
        if (isString && !plus && !zero && !isLongLong && !isNative)
        {
            const bool wide = isLong || (!isShort && (type == L's') == wideFormat);
            return wide ? FormatArgument::WideString : FormatArgument::NarrowString;
        }
        const bool isUnsigned = type == L'u' || type == L'x' || type == L'X';
        if (type == L'd' || (isUnsigned && !plus))
        {
            if (isShort || precision >= 0)
                return FormatArgument::None;
            return isLongLong || (isNative && sizeof(void*) == 8) ? FormatArgument::Int64 : FormatArgument::Int32;
        }
        const bool isPlain =
            !left && !plus && !zero && width == 0 && precision < 0 && !isShort && !isLong && !isLongLong && !isNative;
        return type == L'p' && isPlain ? FormatArgument::Pointer : FormatArgument::None;
    }
};

/// Reads what follows a percent sign into `conversion`, and returns where the format goes on behind it.
template <class Char>
constexpr const Char* ReadConversion(const Char* at, FormatConversion& conversion)
{
    const auto isDigit = [](Char character) { return character >= '0' && character <= '9'; };
    const auto readNumber = [&at, isDigit] {
        constexpr int kMost = 100'000'000;
        int number = 0;
        for (; isDigit(*at); ++at)
            number = number < kMost ? 10 * number + static_cast<int>(*at - '0') : number;
        return number;
    };
    for (; *at == '-' || *at == '+' || *at == '0'; ++at)
    {
        conversion.left = conversion.left || *at == '-';
        conversion.plus = conversion.plus || *at == '+';
        conversion.zero = conversion.zero || *at == '0';
    }
    conversion.width = readNumber();
    if (*at == '.')
    {
        ++at;
        conversion.precision = readNumber();
    }
    if (*at == 'h')
    {
        conversion.isShort = true;
        ++at;
    }
    else if (*at == 'l')
    {
        conversion.isLongLong = at[1] == 'l';
        conversion.isLong = !conversion.isLongLong;
        at += conversion.isLongLong ? 2 : 1;
    }
    else if (*at == 'I')
    {
        conversion.isLongLong = at[1] == '6' && at[2] == '4';
        conversion.isNative = !conversion.isLongLong;
        at += conversion.isLongLong ? 3 : 1;
    }
    if (*at > 0 && *at < 0x7F)
        conversion.type = static_cast<wchar_t>(*at++);
    return at;
}

} // namespace Text
