#include "text/Utf.h"

#include <gtest/gtest.h>

#include <array>

namespace
{

TEST(Text, EveryLengthOfUtf8GoesBothWays)
{
    const std::wstring wide = L"a\x7F\x80\x7FF\x800\xFFFD\U00010000\U0010FFFF";
    const std::string narrow = "a\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBD\xF0\x90\x80\x80\xF4\x8F\xBF\xBF";
    EXPECT_EQ(Text::ToUtf8(wide), narrow);
    EXPECT_EQ(Text::FromUtf8(narrow), wide);
}

TEST(Text, WhatIsIllFormedIsReplacedAndTheRestKept)
{
    for (const char* const illFormed : {"\x80", "\xC1\x80", "\xC3", "\xE2\x82", "\xED\xA0\x80", "\xE0\x80\x80",
                                        "\xF0\x80\x80\x80", "\xF4\x90\x80\x80", "\xF5", "\xFF"})
    {
        const std::wstring text = Text::FromUtf8(std::string("<") + illFormed + ">");
        EXPECT_EQ(text.front(), L'<');
        EXPECT_EQ(text.back(), L'>') << illFormed;
        EXPECT_NE(text.find(L'\xFFFD'), std::wstring::npos);
    }
    EXPECT_EQ(Text::ToUtf8(std::wstring(1, static_cast<wchar_t>(0xD800))), "\xEF\xBF\xBD");
}

TEST(Text, CharactersBeyondTheBasicPlaneBecomeTwoUnits)
{
    const std::wstring text = L"\xE4\U0001F600z";
    std::array<char16_t, 8> units{};
    ASSERT_EQ(Text::ToUtf16(text, units.data()), 4U);
    EXPECT_EQ(std::u16string(units.data(), 4), u"\xE4\U0001F600z");
    EXPECT_EQ(Text::FromUtf16({units.data(), 4}), text);
}

} // namespace
