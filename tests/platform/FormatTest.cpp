#include "platform/Format.h"
#include "platform/Ansi.h"
#include "platform/posix/Formatter.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstdarg>
#include <cstdint>
#include <string>

namespace
{

/// What the platform makes of a format, which the formatter of the others has to make of it as well.
template <class Char>
std::basic_string<Char> Print(const Char* format, ...)
{
    std::array<Char, 256> text{};
    std::array<Char, 256> other{};
    va_list arguments;
    va_start(arguments, format);
    const int otherLength = Platform::Formatter<Char>(other.data(), other.size(), arguments).Run(format);
    const int length = Platform::Format(text.data(), text.size(), format, arguments);
    va_end(arguments);
    EXPECT_EQ(length, otherLength);
    EXPECT_EQ(text, other);
    return length >= 0 ? text.data() : std::basic_string<Char>();
}

TEST(Format, TextMeansWhatItMeansOnWindows)
{
    EXPECT_EQ(Print(L"%s|%hs|%ls|%S%%", L"w\x00E4", "n", L"l", "S"), L"w\x00E4|n|l|S%");
    EXPECT_EQ(Print("%s|%hs|%ls|%S%%", "n", "h", L"w", L"S"), "n|h|w|S%");
    EXPECT_EQ(Print(L"%s|%hs", static_cast<const wchar_t*>(nullptr), static_cast<const char*>(nullptr)),
              L"(null)|(null)");
    EXPECT_EQ(Print(L"[%5s|%-5s|%.2s|%-5.3hs]", L"ab", L"ab", L"abc", "abcd"), L"[   ab|ab   |ab|abc  ]");
    const std::array<wchar_t, 3> unterminated{L'a', L'b', L'c'};
    EXPECT_EQ(Print(L"%.3s", unterminated.data()), L"abc");
}

TEST(Format, IntegersHaveTheSizesOfWindows)
{
    EXPECT_EQ(Print(L"%d %u %lu %ld", INT_MIN, UINT_MAX, UINT_MAX, -1), L"-2147483648 4294967295 4294967295 -1");
    EXPECT_EQ(Print(L"%I64d %lld %I64u %I64x", INT64_MIN, INT64_C(-5), UINT64_MAX, UINT64_C(0xABCDEF0123)),
              L"-9223372036854775808 -5 18446744073709551615 abcdef0123");
    EXPECT_EQ(Print(L"%Iu|%x %X|%04x|%-4d|%4d|%03d", sizeof(int), 255, 255, 0x2a, 3, -3, 12345),
              L"4|ff FF|002a|3   |  -3|12345");
    EXPECT_EQ(Print("%+02d:%02d %+02d:%02d %+d %05d %-+4d|", 2, 0, -3, -30, 0, -7, 1), "+2:00 -3:-30 +0 -0007 +1  |");
}

TEST(Format, PointersHaveAllTheirDigits)
{
    const std::wstring text = Print(L"%p", reinterpret_cast<void*>(std::uintptr_t{0xBEEF}));
    EXPECT_EQ(text, std::wstring(2 * sizeof(void*) - 4, L'0') + L"BEEF");
}

TEST(Format, ATextThatDoesNotFitIsRefusedAtTheExactSize)
{
    std::array<wchar_t, 7> buffer;
    for (const wchar_t* const format : {L"%s", L"1234%.1s", L"%5s"})
    {
        buffer.fill(L'#');
        EXPECT_EQ(Platform::FormatTo(buffer.data(), 6, format, L"12345"), 5);
        EXPECT_EQ(buffer[5], L'\0');
        EXPECT_EQ(buffer[6], L'#');
        EXPECT_EQ(Platform::FormatTo(buffer.data(), 5, format, L"12345"), -1);
        EXPECT_EQ(Platform::FormatTo(buffer.data(), 4, format, L"12345"), -1);
        EXPECT_EQ(buffer[5], L'\0');
    }
    EXPECT_EQ(Platform::FormatTo(buffer.data(), 5, L"%d", 12345), -1);
    EXPECT_EQ(Platform::FormatTo(buffer.data(), 5, L"%05d", 1), -1);
    EXPECT_EQ(Platform::FormatTo(buffer.data(), 5, L"12345"), -1);
    EXPECT_EQ(Platform::FormatTo(buffer.data(), 0, L""), -1);
    EXPECT_EQ(Platform::FormatTo(buffer.data(), 1, L""), 0);
}

int Own(wchar_t* buffer, std::size_t size, const wchar_t* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int length = Platform::Formatter<wchar_t>(buffer, size, arguments).Run(format);
    va_end(arguments);
    return length;
}

TEST(Formatter, ConvertsNarrowTextAndCopiesWhatItDoesNotKnow)
{
    std::array<wchar_t, 64> text;
    EXPECT_GE(Own(text.data(), text.size(), L"%hs|%y %I64 %5", "\xC3\xA4\xE2\x82\xAC"), 0);
    EXPECT_EQ(text.data(), Platform::FromAnsi("\xC3\xA4\xE2\x82\xAC") + L"|%y %I64 %5");
    EXPECT_EQ(Own(text.data(), text.size(), L"%999999999999d", 1), -1);
    EXPECT_EQ(Own(text.data(), text.size(), L"%2147483647s", L""), -1);
}

} // namespace
