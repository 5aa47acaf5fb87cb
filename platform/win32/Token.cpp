#include "platform/Token.h"

#include "platform/win32/Win32.h"

#include <array>

namespace Platform
{

namespace
{

constexpr DWORD LowIntegrity = 0x1000;

class WindowsToken : public Token
{
public:
    bool IsMemberOfBuiltinGroup(KernelHandle token, std::uint32_t group) override
    {
        SID_IDENTIFIER_AUTHORITY authority = SECURITY_NT_AUTHORITY;
        PSID sid = nullptr;
        if (!::AllocateAndInitializeSid(&authority, 2, SECURITY_BUILTIN_DOMAIN_RID, group, 0, 0, 0, 0, 0, 0, &sid))
            return false;
        BOOL isMember = FALSE;
        const bool answered = ::CheckTokenMembership(token, sid, &isMember) != FALSE;
        ::FreeSid(sid);
        return answered && isMember != FALSE;
    }

    bool IsLowIntegrity() override
    {
        HANDLE token = nullptr;
        if (!::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &token))
            return false;
        alignas(TOKEN_MANDATORY_LABEL) std::array<BYTE, sizeof(TOKEN_MANDATORY_LABEL) + SECURITY_MAX_SID_SIZE> buffer;
        DWORD size = 0;
        const bool read = ::GetTokenInformation(token, TokenIntegrityLevel, buffer.data(),
                                                static_cast<DWORD>(buffer.size()), &size) != FALSE;
        ::CloseHandle(token);
        if (!read)
            return false;
        const PSID label = reinterpret_cast<const TOKEN_MANDATORY_LABEL*>(buffer.data())->Label.Sid;
        const DWORD last = *::GetSidSubAuthorityCount(label) - 1U;
        return *::GetSidSubAuthority(label, last) == LowIntegrity;
    }
};

} // namespace

template <>
Token& System<Token>()
{
    return Detail::Undying<WindowsToken>();
}

} // namespace Platform
