#pragma once

#include <cstdint>

namespace Platform
{

/// The calling thread's error number of the last failed system call: errno on POSIX, GetLastError() on Windows.
std::uint32_t LastError();
void SetLastError(std::uint32_t error);

/// Puts the thread's last error back to what it was on construction, whatever was called in between.
class LastErrorGuard
{
public:
    LastErrorGuard() : m_error(LastError()) {}
    ~LastErrorGuard() { SetLastError(m_error); }
    LastErrorGuard(const LastErrorGuard&) = delete;
    LastErrorGuard& operator=(const LastErrorGuard&) = delete;

private:
    const std::uint32_t m_error;
};

} // namespace Platform
