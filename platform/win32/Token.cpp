#include "platform/Token.h"

#include "platform/win32/Win32.h"

#include <array>
#include <type_traits>

namespace Platform
{

namespace
{

constexpr DWORD kLowIntegrity = 0x1000;

/// A token's handle, closed by the destructor; null: there is none.
class TokenHandle
{
public:
    explicit TokenHandle(HANDLE token) : m_token(token) {}
    ~TokenHandle()
    {
        if (m_token)
            ::CloseHandle(m_token);
    }
    TokenHandle(const TokenHandle&) = delete;
    TokenHandle& operator=(const TokenHandle&) = delete;

    HANDLE Get() const { return m_token; }

private:
    const HANDLE m_token;
};

HANDLE OpenProcessToken()
{
    HANDLE token = nullptr;
    ::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &token);
    return token;
}

/// Information of a fixed size. False: the system does not tell.
template <class Information>
bool Query(HANDLE token, TOKEN_INFORMATION_CLASS kind, Information& information)
{
    static_assert(std::is_trivially_copyable_v<Information>);
    DWORD size = 0;
    return ::GetTokenInformation(token, kind, &information, sizeof(information), &size) != FALSE;
}

/// A token of the same rights for the test of membership, which a primary token is not given to.
HANDLE DuplicateForTest(HANDLE token)
{
    HANDLE duplicate = nullptr;
    ::DuplicateToken(token, SecurityIdentification, &duplicate);
    return duplicate;
}

/// The token that its user would have after an elevation; null: there is no other.
HANDLE ElevatedToken(HANDLE token)
{
    TOKEN_ELEVATION_TYPE type = TokenElevationTypeDefault;
    TOKEN_LINKED_TOKEN linked{};
    const bool limited = Query(token, TokenElevationType, type) && type == TokenElevationTypeLimited;
    return limited && Query(token, TokenLinkedToken, linked) ? linked.LinkedToken : nullptr;
}

class WindowsToken : public Token
{
public:
    bool IsMemberOfBuiltinGroup(KernelHandle token, std::uint32_t group) override
    {
        TOKEN_TYPE type = TokenImpersonation;
        const bool primary = token && Query(token, TokenType, type) && type == TokenPrimary;
        const TokenHandle duplicate(primary ? DuplicateForTest(token) : nullptr);
        if (primary && !duplicate.Get())
            return false;
        SID_IDENTIFIER_AUTHORITY authority = SECURITY_NT_AUTHORITY;
        PSID sid = nullptr;
        if (!::AllocateAndInitializeSid(&authority, 2, SECURITY_BUILTIN_DOMAIN_RID, group, 0, 0, 0, 0, 0, 0, &sid))
            return false;
        BOOL isMember = FALSE;
        const bool answered = ::CheckTokenMembership(primary ? duplicate.Get() : token, sid, &isMember) != FALSE;
        ::FreeSid(sid);
        return answered && isMember != FALSE;
    }

    bool IsUserMemberOfBuiltinGroup(KernelHandle token, std::uint32_t group) override
    {
        if (IsMemberOfBuiltinGroup(token, group))
            return true;
        const TokenHandle process(token ? nullptr : OpenProcessToken());
        const TokenHandle elevated(ElevatedToken(token ? token : process.Get()));
        return elevated.Get() && IsMemberOfBuiltinGroup(elevated.Get(), group);
    }

    bool IsLowIntegrity() override
    {
        const TokenHandle token(OpenProcessToken());
        alignas(TOKEN_MANDATORY_LABEL) std::array<BYTE, sizeof(TOKEN_MANDATORY_LABEL) + SECURITY_MAX_SID_SIZE> buffer;
        if (!Query(token.Get(), TokenIntegrityLevel, buffer))
            return false;
        const PSID label = reinterpret_cast<const TOKEN_MANDATORY_LABEL*>(buffer.data())->Label.Sid;
        const DWORD last = *::GetSidSubAuthorityCount(label) - 1U;
        return *::GetSidSubAuthority(label, last) == kLowIntegrity;
    }
};

} // namespace

template <>
Token& System<Token>()
{
    return Detail::NoDestructor<WindowsToken>();
}

} // namespace Platform
