#include "fuzz/HostOracle.h"

#include <gtest/gtest.h>

#include <unicode/uchar.h>
#include <unicode/uscript.h>

#include <map>
#include <random>
#include <string>
#include <vector>

namespace
{

using HostOracle::Difference;

std::string Codes(const std::wstring& host)
{
    std::string result;
    for (const wchar_t code : host)
        result += testing::PrintToString(static_cast<unsigned>(code)) + ' ';
    return result;
}

/// The assigned characters beyond ASCII of each script, but for those of private use.
std::vector<std::wstring> Scripts()
{
    std::map<int, std::wstring> scripts;
    for (UChar32 code = 0x80; code <= UCHAR_MAX_VALUE; ++code)
        if ((U_GET_GC_MASK(code) & (U_GC_CN_MASK | U_GC_CO_MASK | U_GC_CS_MASK)) == 0)
            scripts[u_getIntPropertyValue(code, UCHAR_SCRIPT)] += static_cast<wchar_t>(code);
    std::vector<std::wstring> result;
    for (const auto& [number, characters] : scripts)
        result.push_back(characters);
    return result;
}

class RandomHosts
{
public:
    std::wstring Next()
    {
        std::wstring result;
        for (std::size_t labels = 1 + Below(3); labels > 0; --labels)
            result += Label() + (labels > 1 ? L"." : L"");
        return result;
    }

private:
    std::size_t Below(std::size_t end) { return m_random() % end; }

    wchar_t OneOf(const std::wstring& characters) { return characters[Below(characters.size())]; }

    std::wstring Label()
    {
        const std::wstring& script = m_scripts[Below(m_scripts.size())];
        std::wstring result(1, OneOf(script));
        for (std::size_t more = Below(8); more > 0; --more)
            result += Below(5) == 0 ? OneOf(m_common) : OneOf(script);
        return result;
    }

    std::mt19937 m_random{46};
    const std::vector<std::wstring> m_scripts = Scripts();
    const std::wstring m_common =
        L"aZ09-_.\xE000\x00AD\x200C\x200D\xFE0F\x0301\x0323\x094D\x0660\x06F0\x0644\x05D0\x3002\x1F468";
};

TEST(BrowserHost, IsTheSameForRandomHostsOfAllScripts)
{
    constexpr int kHosts = 30000;
    RandomHosts hosts;
    int same = 0;
    for (int left = kHosts; left > 0; --left)
    {
        const std::wstring host = hosts.Next();
        const Difference difference = HostOracle::Compare(host);
        ASSERT_NE(difference, Difference::Unexplained) << Codes(host);
        same += difference == Difference::None ? 1 : 0;
    }
    EXPECT_GE(same, kHosts * 99 / 100);
}

/// But for the unified ideographs: two thirds of all, and all alike.
TEST(BrowserHost, IsTheSameForEveryCharacter)
{
    for (const std::wstring& script : Scripts())
        for (const wchar_t code : script)
        {
            if (u_hasBinaryProperty(code, UCHAR_UNIFIED_IDEOGRAPH))
                continue;
            const std::wstring letter(1, code);
            for (const std::wstring& host :
                 {letter, L"\x05D0" + letter, letter + L"\x200C\x0646", L"\x0646\x200C" + letter})
                ASSERT_NE(HostOracle::Compare(host), Difference::Unexplained) << Codes(host);
        }
}

} // namespace
