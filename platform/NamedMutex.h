#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace Platform
{

/// A mutex that processes share by its name. It survives the death of a process that holds it. Not recursive.
///
/// On POSIX a name is shared by the processes of one user that have the same word size. It lies in memory and ends with
/// the last process that has it open; a process that goes on after fork() has it open through its parent only.
class NamedMutex
{
public:
    /// What a wait ends with; the numbers are those of Windows.
    enum class Wait : std::uint32_t
    {
        Acquired = 0,
        Abandoned = 0x80, ///< Acquired, from a holder that died.
        TimedOut = 0x102,
        Failed = 0xFFFFFFFF
    };

    NamedMutex();
    ~NamedMutex();
    NamedMutex(const NamedMutex&) = delete;
    NamedMutex& operator=(const NamedMutex&) = delete;

    /// Creates the mutex, or opens it if it exists. `security` is an SDDL text or null. Returns 0 or the error.
    std::uint32_t Create(const std::wstring& name, const wchar_t* security);

    /// Opens a mutex that exists, with no right but to lock it. Returns 0 or the system's error number.
    std::uint32_t Open(const std::wstring& name);

    bool IsOpen() const { return m_object != nullptr; }

    /// Whether Create() was refused for want of rights, where Open() may succeed.
    static bool IsAccessDenied(std::uint32_t error);

    Wait Lock(std::uint32_t timeoutMs);
    void Unlock(); ///< By the thread that holds it.

    /// A number that those who hold the mutex leave to the next one; 0 at first. By the thread that holds it. On
    /// Windows nothing is kept, and it is always 0.
    std::uint64_t Number() const;
    void SetNumber(std::uint64_t number);

    /// Unlocks a mutex that the thread holds, however the scope is left.
    class Unlocker
    {
    public:
        explicit Unlocker(NamedMutex& mutex) : m_mutex(mutex) {}
        ~Unlocker() { m_mutex.Unlock(); }
        Unlocker(const Unlocker&) = delete;
        Unlocker& operator=(const Unlocker&) = delete;

    private:
        NamedMutex& m_mutex;
    };

private:
    class Object;
    std::unique_ptr<Object> m_object;
};

} // namespace Platform
