#include "platform/Sessions.h"

#include "text/Utf.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <optional>

namespace Platform
{

namespace
{

constexpr std::uint32_t kTheSession = 1;
constexpr std::size_t kPasswordBuffer = 0x4000;

/// S-1-22-1-uid: revision, number of sub-authorities, authority (big-endian), sub-authorities (little-endian).
std::array<std::uint8_t, 16> SidOf(uid_t user)
{
    const auto byte = [user](unsigned shift) { return static_cast<std::uint8_t>(user >> shift); };
    return {1, 2, 0, 0, 0, 0, 0, 22, 1, 0, 0, 0, byte(0), byte(8), byte(16), byte(24)};
}

std::optional<uid_t> UserOf(const std::string& name)
{
    passwd entry{};
    passwd* found = nullptr;
    std::array<char, kPasswordBuffer> buffer;
    ::getpwnam_r(name.c_str(), &entry, buffer.data(), buffer.size(), &found);
    return found ? std::optional(found->pw_uid) : std::nullopt;
}

std::wstring HostName()
{
    std::array<char, 256> name{};
    return ::gethostname(name.data(), name.size() - 1) == 0 ? Text::FromUtf8(name.data()) : std::wstring();
}

class PosixSessions : public Sessions
{
public:
    bool Enumerate(std::vector<Session>& sessions) override
    {
        sessions = {{kTheSession, true}};
        return true;
    }

    std::uint32_t ActiveConsoleSession() override { return kTheSession; }

    std::wstring UserName(std::uint32_t session) override
    {
        passwd entry{};
        passwd* found = nullptr;
        std::array<char, kPasswordBuffer> buffer;
        if (session == kTheSession)
            ::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found);
        return found ? Text::FromUtf8(found->pw_name) : std::wstring();
    }

    std::wstring DomainName(std::uint32_t session) override
    {
        return session == kTheSession ? HostName() : std::wstring();
    }

    std::uint32_t LookupAccount(const wchar_t* account, void* sid, std::uint32_t* sidSize, wchar_t* domain,
                                std::uint32_t* domainSize) override
    {
        const std::wstring name(account);
        const auto backslash = name.find(L'\\');
        const std::wstring host = HostName();
        const auto user = UserOf(Text::ToUtf8(backslash == std::wstring::npos ? name : name.substr(backslash + 1)));
        if (!user || (backslash != std::wstring::npos && name.compare(0, backslash, host) != 0))
            return kErrorNoneMapped;
        const auto found = SidOf(*user);
        const auto domainNeeded = static_cast<std::uint32_t>(host.size() + 1);
        const bool fits = *sidSize >= found.size() && *domainSize >= domainNeeded;
        *sidSize = static_cast<std::uint32_t>(found.size());
        *domainSize = domainNeeded;
        if (!fits)
            return kErrorInsufficientBuffer;
        std::memcpy(sid, found.data(), found.size());
        host.copy(domain, host.size());
        domain[host.size()] = L'\0';
        return 0;
    }

    std::uint32_t ProcessUser(std::vector<std::uint8_t>& sid) override
    {
        const auto user = SidOf(::getuid());
        sid.assign(user.begin(), user.end());
        return 0;
    }

    bool ProcessSession(std::uint32_t& session) override
    {
        session = kTheSession;
        return true;
    }
};

} // namespace

template <>
Sessions& System<Sessions>()
{
    return Detail::NoDestructor<PosixSessions>();
}

} // namespace Platform
