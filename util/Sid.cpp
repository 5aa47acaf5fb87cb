#include "util/Sid.h"

#include "platform/Sessions.h"
#include "text/SidString.h"

#include <cwchar>
#include <utility>

Sid::Sid(const std::wstring& accountName)
{
    // The system would answer an empty name with the SID of a built-in domain.
    if (accountName.empty())
    {
        m_error = Platform::Sessions::kErrorNoneMapped;
        return;
    }
    auto& sessions = Platform::Get<Platform::Sessions>();
    std::uint32_t sidSize = 0;
    std::uint32_t domainSize = 0;
    m_error = sessions.LookupAccount(accountName.c_str(), nullptr, &sidSize, nullptr, &domainSize);
    if (m_error != Platform::Sessions::kErrorInsufficientBuffer || sidSize == 0 || domainSize == 0)
        return;
    std::vector<std::uint8_t> sid(sidSize);
    std::vector<wchar_t> domain(domainSize);
    m_error = sessions.LookupAccount(accountName.c_str(), sid.data(), &sidSize, domain.data(), &domainSize);
    if (m_error == 0)
        m_bytes = std::move(sid);
}

std::wstring Sid::ToString() const
{
    return Text::SidString(m_bytes);
}

std::optional<std::uint32_t> Sid::RelativeId() const
{
    const std::wstring text = ToString();
    const auto dash = text.rfind(L'-');
    if (dash == std::wstring::npos)
        return std::nullopt;
    return static_cast<std::uint32_t>(std::wcstoul(text.c_str() + dash + 1, nullptr, 10));
}
