#include "platform/Sessions.h"

#include "platform/win32/Win32.h"

#include <wtsapi32.h>

#include <array>

namespace Platform
{

namespace
{

std::wstring QuerySession(std::uint32_t session, WTS_INFO_CLASS information)
{
    wchar_t* text = nullptr;
    DWORD size = 0;
    if (!::WTSQuerySessionInformationW(WTS_CURRENT_SERVER_HANDLE, session, information, &text, &size))
        return {};
    std::wstring result = text ? text : L"";
    ::WTSFreeMemory(text);
    return result;
}

class WindowsSessions : public Sessions
{
public:
    bool Enumerate(std::vector<Session>& sessions) override
    {
        constexpr DWORD kVersion = 1;
        WTS_SESSION_INFOW* list = nullptr;
        DWORD count = 0;
        if (!::WTSEnumerateSessionsW(WTS_CURRENT_SERVER_HANDLE, 0, kVersion, &list, &count))
            return false;
        sessions.clear();
        for (DWORD i = 0; i < count; ++i)
            sessions.push_back({list[i].SessionId, list[i].State == WTSActive});
        ::WTSFreeMemory(list);
        return true;
    }

    std::uint32_t ActiveConsoleSession() override { return ::WTSGetActiveConsoleSessionId(); }
    std::wstring UserName(std::uint32_t session) override { return QuerySession(session, WTSUserName); }
    std::wstring DomainName(std::uint32_t session) override { return QuerySession(session, WTSDomainName); }

    std::uint32_t LookupAccount(const wchar_t* account, void* sid, std::uint32_t* sidSize, wchar_t* domain,
                                std::uint32_t* domainSize) override
    {
        DWORD sidBytes = *sidSize;
        DWORD domainCharacters = *domainSize;
        SID_NAME_USE use;
        const bool found =
            ::LookupAccountNameW(nullptr, account, sid, &sidBytes, domain, &domainCharacters, &use) != FALSE;
        const DWORD error = found ? 0 : ::GetLastError();
        *sidSize = sidBytes;
        *domainSize = domainCharacters;
        return error;
    }

    std::uint32_t ProcessUser(std::vector<std::uint8_t>& sid) override
    {
        HANDLE token = nullptr;
        if (!::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &token))
            return ::GetLastError();
        alignas(TOKEN_USER) std::array<BYTE, sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE> buffer;
        DWORD size = 0;
        const bool read =
            ::GetTokenInformation(token, TokenUser, buffer.data(), static_cast<DWORD>(buffer.size()), &size) != FALSE;
        const DWORD error = read ? 0 : ::GetLastError();
        ::CloseHandle(token);
        if (read)
        {
            const PSID user = reinterpret_cast<const TOKEN_USER*>(buffer.data())->User.Sid;
            const auto* const bytes = static_cast<const std::uint8_t*>(user);
            sid.assign(bytes, bytes + ::GetLengthSid(user));
        }
        return error;
    }

    bool ProcessSession(std::uint32_t& session) override
    {
        DWORD id = 0;
        if (!::ProcessIdToSessionId(::GetCurrentProcessId(), &id))
            return false;
        session = id;
        return true;
    }
};

} // namespace

template <>
Sessions& System<Sessions>()
{
    return Detail::NoDestructor<WindowsSessions>();
}

} // namespace Platform
