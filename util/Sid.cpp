#include "util/Sid.h"

#include "platform/Sessions.h"

#include <array>
#include <cwchar>
#include <utility>

namespace
{

constexpr std::size_t HeaderSize = 8;
constexpr std::size_t MaximumSubAuthorities = 15;

std::uint32_t SubAuthority(const std::uint8_t* bytes)
{
    return bytes[0] | std::uint32_t{bytes[1]} << 8 | std::uint32_t{bytes[2]} << 16 | std::uint32_t{bytes[3]} << 24;
}

} // namespace

Sid::Sid(const std::wstring& accountName)
{
    // The system would answer an empty name with the SID of a built-in domain.
    if (accountName.empty())
    {
        m_error = Platform::Sessions::ErrorNoneMapped;
        return;
    }
    auto& sessions = Platform::Get<Platform::Sessions>();
    std::uint32_t sidSize = 0;
    std::uint32_t domainSize = 0;
    m_error = sessions.LookupAccount(accountName.c_str(), nullptr, &sidSize, nullptr, &domainSize);
    if (m_error != Platform::Sessions::ErrorInsufficientBuffer || sidSize == 0 || domainSize == 0)
    {
        return;
    }
    std::vector<std::uint8_t> sid(sidSize);
    std::vector<wchar_t> domain(domainSize);
    m_error = sessions.LookupAccount(accountName.c_str(), sid.data(), &sidSize, domain.data(), &domainSize);
    if (m_error == 0)
    {
        m_bytes = std::move(sid);
    }
}

std::wstring Sid::ToString() const
{
    if (m_bytes.size() < HeaderSize || m_bytes[1] > MaximumSubAuthorities ||
        m_bytes.size() < HeaderSize + 4u * m_bytes[1])
    {
        return {};
    }
    std::uint64_t authority = 0;
    for (std::size_t i = 2; i < HeaderSize; ++i)
    {
        authority = authority << 8 | m_bytes[i];
    }
    std::wstring text = L"S-" + std::to_wstring(m_bytes[0]) + L"-";
    if (authority <= 0xFFFFFFFF)
    {
        text += std::to_wstring(authority);
    }
    else
    {
        std::array<wchar_t, 16> hex{};
        std::swprintf(hex.data(), hex.size(), L"0x%012llX", static_cast<unsigned long long>(authority));
        text += hex.data();
    }
    for (std::size_t i = 0; i < m_bytes[1]; ++i)
    {
        text += L"-" + std::to_wstring(SubAuthority(&m_bytes[HeaderSize + 4 * i]));
    }
    return text;
}

std::optional<std::uint32_t> Sid::RelativeId() const
{
    const std::wstring text = ToString();
    const auto dash = text.rfind(L'-');
    if (dash == std::wstring::npos)
    {
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(std::wcstoul(text.c_str() + dash + 1, nullptr, 10));
}
