#pragma once

#include "platform/Service.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Platform
{

/// The sessions of this computer, the accounts logged on to them, and the account of this process. Any thread.
///
/// SIDs are in the binary form of Windows on every platform. POSIX has one active session, numbered 1, of the user that
/// the process runs as; the SID of a user is S-1-22-1- and the user's number.
class Sessions
{
public:
    struct Session
    {
        std::uint32_t id;
        bool active;
    };

    static constexpr std::uint32_t kInvalid = 0xFFFFFFFF;
    static constexpr std::uint32_t kErrorInsufficientBuffer = 122;
    static constexpr std::uint32_t kErrorNoneMapped = 1332; ///< There is no such account.

    virtual ~Sessions() = default;

    /// All sessions of the local server, in the system's order. False: the system gives no list.
    virtual bool Enumerate(std::vector<Session>& sessions) = 0;

    /// The session at the physical console, kInvalid while none is attached.
    virtual std::uint32_t ActiveConsoleSession() = 0;

    /// Empty: nobody is logged on, or the session does not exist.
    virtual std::wstring UserName(std::uint32_t session) = 0;
    virtual std::wstring DomainName(std::uint32_t session) = 0;

    /// Looks up an account's SID and the name of its domain, which both go to buffers of the given sizes (bytes, and
    /// characters with the terminator). Returns 0, kErrorInsufficientBuffer with the sizes needed, or another error.
    virtual std::uint32_t LookupAccount(const wchar_t* account, void* sid, std::uint32_t* sidSize, wchar_t* domain,
                                        std::uint32_t* domainSize) = 0;

    /// The SID of the user that this process runs as. Returns 0 or the system's error number.
    virtual std::uint32_t ProcessUser(std::vector<std::uint8_t>& sid) = 0;

    /// The session that this process belongs to. False: the system does not tell, and `session` is unchanged.
    virtual bool ProcessSession(std::uint32_t& session) = 0;
};

template <>
Sessions& System<Sessions>();

} // namespace Platform
