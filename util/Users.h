#pragma once

#include "platform/Sessions.h"
#include "util/Sid.h"

#include <cstdint>
#include <string>

/// The users of this computer who have a session. No state; any thread.
class AllUsers
{
public:
    /// The session whose user is shown the settings: of the active ones the last that is not session 0, else session 0;
    /// the console's session when the system gives no list; Platform::Sessions::kInvalid when there is none.
    std::uint32_t GetActiveSession() const;
};

/// The user logged on to a session.
class LoggedInUser
{
public:
    explicit LoggedInUser(std::uint32_t session);
    static LoggedInUser FromActiveUser();

    /// Platform::Sessions::kInvalid when no user was found.
    std::uint32_t SessionId() const { return m_session; }

    /// The SID's text; empty on failure.
    std::wstring GetSid() const { return m_sid.ToString(); }

    /// The error of the look-up that gave no SID.
    std::uint32_t LastError() const { return m_sid.LastError(); }

private:
    std::uint32_t m_session = Platform::Sessions::kInvalid;
    Sid m_sid;
};

/// The user that this process runs as.
class CurrentUser
{
public:
    CurrentUser();

    /// Platform::Sessions::kInvalid when the system does not tell.
    std::uint32_t SessionId() const { return m_session; }

    /// False: no SID was read, and `sid` is unchanged.
    bool GetSid(std::wstring& sid) const;
    std::uint32_t LastError() const { return m_sid.LastError(); }

private:
    std::uint32_t m_session = Platform::Sessions::kInvalid;
    Sid m_sid;
};
