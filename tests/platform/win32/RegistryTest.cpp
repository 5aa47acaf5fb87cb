#include "platform/Registry.h"

#include "platform/win32/Win32.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using Platform::RegistryRoot;

constexpr const wchar_t* kKey = L"Software\\Norlane\\ORB\\RegistryTest";

class Registry : public testing::TestWithParam<RegistryRoot>
{
protected:
    Registry() { Clear(); }
    ~Registry() override { Clear(); }

    HKEY Root() const { return GetParam() == RegistryRoot::Machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER; }

    void Write(const wchar_t* name, DWORD type, const void* data, std::size_t size, REGSAM view = KEY_WOW64_64KEY)
    {
        HKEY key = nullptr;
        ASSERT_EQ(::RegCreateKeyExW(Root(), kKey, 0, nullptr, 0, KEY_SET_VALUE | view, nullptr, &key, nullptr), 0);
        EXPECT_EQ(::RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(size)), 0);
        ::RegCloseKey(key);
    }
    void Write(const wchar_t* name, DWORD number, REGSAM view = KEY_WOW64_64KEY)
    {
        Write(name, REG_DWORD, &number, sizeof(number), view);
    }

    auto ReadDword(const wchar_t* name) { return m_registry.ReadDword(GetParam(), kKey, name); }
    auto ReadString(const wchar_t* name) { return m_registry.ReadString(GetParam(), kKey, name); }

    Platform::Registry& m_registry = Platform::Get<Platform::Registry>();

private:
    void Clear()
    {
        for (const REGSAM view : {REGSAM{KEY_WOW64_64KEY}, REGSAM{KEY_WOW64_32KEY}})
            ::RegDeleteKeyExW(Root(), kKey, view, 0);
    }
};

TEST_P(Registry, AnswersFromThe64BitView)
{
    Write(L"both", 32, KEY_WOW64_32KEY);
    Write(L"both", 64);
    EXPECT_EQ(ReadDword(L"both"), 64U);
    EXPECT_EQ(ReadDword(L"BOTH"), 64U);

    Write(L"narrow view", 32, KEY_WOW64_32KEY);
    const bool viewsDiffer = GetParam() == RegistryRoot::Machine; // the user's software is the same in both
    EXPECT_EQ(ReadDword(L"narrow view").has_value(), !viewsDiffer);
}

TEST_P(Registry, AValueOfAnotherTypeIsAbsent)
{
    Write(L"number", 0xFFFFFFFF);
    Write(L"text", REG_SZ, L"5", 4);
    Write(L"short", REG_DWORD, "\1", 1);
    EXPECT_EQ(ReadDword(L"number"), 0xFFFFFFFFU);
    EXPECT_EQ(ReadString(L"text"), L"5");
    EXPECT_FALSE(ReadString(L"number"));
    EXPECT_FALSE(ReadDword(L"text"));
    EXPECT_FALSE(ReadDword(L"short"));
    EXPECT_FALSE(ReadDword(L"absent"));
    EXPECT_FALSE(m_registry.ReadString(GetParam(), L"Software\\Norlane\\Absent", L"text"));
}

TEST_P(Registry, TextIsWholeHoweverItWasStored)
{
    const std::wstring longString(5000, L'\xE4');
    Write(L"long", REG_SZ, longString.data(), (longString.size() + 1) * sizeof(wchar_t));
    Write(L"unterminated", REG_SZ, L"abc", 3 * sizeof(wchar_t));
    Write(L"twice terminated", REG_SZ, L"abc\0", 5 * sizeof(wchar_t));
    Write(L"empty", REG_SZ, L"", sizeof(wchar_t));
    Write(L"nothing", REG_SZ, L"", 0);
    EXPECT_EQ(ReadString(L"long"), longString);
    EXPECT_EQ(ReadString(L"unterminated"), L"abc");
    EXPECT_EQ(ReadString(L"twice terminated"), L"abc");
    EXPECT_EQ(ReadString(L"empty"), L"");
    EXPECT_EQ(ReadString(L"nothing"), L"");
}

INSTANTIATE_TEST_SUITE_P(Roots, Registry, testing::Values(RegistryRoot::Machine, RegistryRoot::User),
                         [](const auto& root) { return root.param == RegistryRoot::Machine ? "Machine" : "User"; });

} // namespace
