#include "platform/Format.h"
#include "platform/Text.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cmath>
#include <cstdint>
#include <string>

namespace
{

template <class... Arguments>
std::wstring Wide(const wchar_t* format, Arguments... arguments)
{
    return Platform::FormatText(format, arguments...);
}

std::string NarrowV(const char* format, ...)
{
    std::array<char, 256> buffer;
    va_list arguments;
    va_start(arguments, format);
    const int length = Platform::Format(buffer.data(), buffer.size(), format, arguments);
    va_end(arguments);
    return length < 0 ? "does not fit" : std::string(buffer.data(), static_cast<std::size_t>(length));
}

TEST(Format, TextMeansWhatItMeansOnWindows)
{
    EXPECT_EQ(Wide(L"%s|%hs|%ls|%S", L"w\x00E4", "n", L"l", "S"), L"w\x00E4|n|l|S");
    EXPECT_EQ(NarrowV("%s|%hs|%ls|%S", "n", "h", L"w\x00E4", L"S"), "n|h|" + Platform::ToAnsi(L"w\x00E4") + "|S");
    EXPECT_EQ(Wide(L"%hs", "\xC3\xA4\xE2\x82\xAC"), Platform::FromAnsi("\xC3\xA4\xE2\x82\xAC"));
    EXPECT_EQ(Wide(L"%s|%hs", static_cast<const wchar_t*>(nullptr), static_cast<const char*>(nullptr)),
              L"(null)|(null)");
    EXPECT_EQ(Wide(L"[%5s|%-5s|%.2s|%*s]", L"ab", L"ab", L"abc", -3, L"x"), L"[   ab|ab   |ab|x  ]");
    EXPECT_EQ(Wide(L"%c%hc%%", L'\x20AC', 'n'), L"\x20ACn%");
}

TEST(Format, IntegersHaveTheSizesOfWindows)
{
    EXPECT_EQ(Wide(L"%d %i %u %lu %ld", INT_MIN, -1, UINT_MAX, UINT_MAX, -1),
              L"-2147483648 -1 4294967295 4294967295 -1");
    EXPECT_EQ(Wide(L"%I64d %lld %I64u %I64x", INT64_MIN, INT64_C(-5), UINT64_MAX, UINT64_C(0xABCDEF0123)),
              L"-9223372036854775808 -5 18446744073709551615 abcdef0123");
    EXPECT_EQ(Wide(L"%Iu %I32d %hd", sizeof(int), -7, 70000), L"4 -7 4464");
    EXPECT_EQ(Wide(L"%x %X %#x %o %04x %08.3d|%-4d|% d", 255, 255, 255, 8, 0x2a, 7, 3, 5),
              L"ff FF 0xff 10 002a      007|3   | 5");
    EXPECT_EQ(Wide(L"%+02d:%02d %+02d:%02d", 2, 0, -3, -30), L"+2:00 -3:-30");
    EXPECT_EQ(Wide(L"%.0d|%.0d", 0, 1), L"|1");
    EXPECT_EQ(Wide(L"%#o|%#o|%#.5o|%#.0o|%#05o", 0, 8, 8, 0, 8), L"0|010|00010|0|00010");
}

TEST(Format, PointersHaveAllTheirDigits)
{
    const std::wstring text = Wide(L"%p", reinterpret_cast<void*>(std::uintptr_t{0xBEEF}));
    EXPECT_EQ(text, std::wstring(2 * sizeof(void*) - 4, L'0') + L"BEEF");
}

TEST(Format, FloatsKeepWidthPrecisionAndFlags)
{
    EXPECT_EQ(Wide(L"%.2f|%8.3f|%-8.1f|%+g|%05.1f", 3.14159, 2.5, 1.75, 1e10, 1.5),
              L"3.14|   2.500|1.8     |+1e+10|001.5");
    EXPECT_EQ(Wide(L"%.1f", 1e300).size(), 303U);
}

TEST(Format, ATextThatDoesNotFitIsRefusedAtTheExactSize)
{
    std::array<wchar_t, 6> buffer;
    EXPECT_EQ(Platform::FormatTo(buffer.data(), 6, L"%s", L"12345"), 5);
    EXPECT_EQ(buffer[5], L'\0');
    EXPECT_EQ(Platform::FormatTo(buffer.data(), 5, L"%s", L"12345"), -1);
    EXPECT_EQ(Platform::FormatTo(buffer.data(), 5, L"%d", 12345), -1);
    EXPECT_EQ(Platform::FormatTo(buffer.data(), 5, L"%5d", 1), -1);
    EXPECT_EQ(Platform::FormatTo(buffer.data(), 5, L"12345"), -1);
    EXPECT_EQ(Platform::FormatTo(buffer.data(), 4, L"%.300g", 1.5), 3);
    EXPECT_EQ(Platform::FormatTo(buffer.data(), 4, L"%.300f", HUGE_VAL), 3);
    EXPECT_EQ(Platform::FormatTo(buffer.data(), 5, L"%.3f", 1.5), -1);
    EXPECT_EQ(Platform::FormatTo(buffer.data(), 0, L""), -1);
    EXPECT_EQ(Platform::FormatTo(buffer.data(), 1, L""), 0);
}

TEST(Format, HostileFormatsDoNoHarm)
{
    EXPECT_EQ(Wide(L"%"), L"%");
    EXPECT_EQ(Wide(L"100%% %5"), L"100% %5");
    EXPECT_EQ(Wide(L"%y %I64 %ll"), L"%y %I64 %ll");
    EXPECT_EQ(Wide(L"%999999999999d", 1), L"");
    EXPECT_EQ(Wide(L"%.999999999999d", 1), L"");
    EXPECT_EQ(Wide(L"%*d", INT_MIN, 1), L"");
    EXPECT_EQ(Wide(L"%.*d", INT_MIN, 2), L"2");
    EXPECT_EQ(Wide(L"%2147483647s", L""), L"");
    EXPECT_EQ(Wide(L"%.2147483647f", 1.0), L"");
    EXPECT_EQ(Wide(L"%.2147483647g", 1.0), L"1");

    int untouched = 42;
    EXPECT_EQ(Wide(L"a%nb", &untouched), L"ab");
    EXPECT_EQ(untouched, 42);
}

TEST(Format, APrecisionStandsForAMissingTerminator)
{
    const std::array<wchar_t, 3> text{L'a', L'b', L'c'};
    EXPECT_EQ(Wide(L"%.3s", text.data()), L"abc");
}

} // namespace
