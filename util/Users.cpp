#include "util/Users.h"

#include <vector>

using Platform::Sessions;

namespace
{

/// domain\user of who is logged on to a session; empty: nobody.
std::wstring AccountOf(std::uint32_t session)
{
    // To the system this number means the session of the calling process.
    if (session == Sessions::kInvalid)
        return {};
    auto& system = Platform::Get<Sessions>();
    const std::wstring user = system.UserName(session);
    const std::wstring domain = system.DomainName(session);
    return user.empty() || domain.empty() ? std::wstring() : domain + L"\\" + user;
}

} // namespace

std::uint32_t AllUsers::GetActiveSession() const
{
    auto& system = Platform::Get<Sessions>();
    std::vector<Sessions::Session> sessions;
    if (!system.Enumerate(sessions))
        return system.ActiveConsoleSession();
    std::uint32_t active = Sessions::kInvalid;
    bool serviceSessionActive = false;
    for (const Sessions::Session& session : sessions)
    {
        if (session.active && session.id != 0)
            active = session.id;
        serviceSessionActive = serviceSessionActive || (session.active && session.id == 0);
    }
    return active == Sessions::kInvalid && serviceSessionActive ? 0 : active;
}

LoggedInUser::LoggedInUser(std::uint32_t session) : m_sid(AccountOf(session))
{
    if (!m_sid.IsEmpty())
        m_session = session;
}

LoggedInUser LoggedInUser::FromActiveUser()
{
    return LoggedInUser(AllUsers().GetActiveSession());
}

CurrentUser::CurrentUser()
{
    auto& system = Platform::Get<Sessions>();
    std::vector<std::uint8_t> sid;
    const std::uint32_t error = system.ProcessUser(sid);
    m_sid = Sid(error == 0 ? std::move(sid) : std::vector<std::uint8_t>(), error);
    system.ProcessSession(m_session);
}

bool CurrentUser::GetSid(std::wstring& sid) const
{
    std::wstring text = m_sid.ToString();
    if (text.empty())
        return false;
    sid = std::move(text);
    return true;
}
