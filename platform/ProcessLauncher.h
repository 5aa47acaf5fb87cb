#pragma once

#include "platform/KernelHandle.h"
#include "platform/Service.h"

#include <cstdint>
#include <string>

namespace Platform
{

/// Starts other programs. Any thread.
///
/// On POSIX a command line is taken apart by the rules of Windows for quotes and backslashes; a process that outlives
/// its handle stays a zombie when it ends, until this process ends.
class ProcessLauncher
{
public:
    static constexpr std::uint32_t kDetached = 8; ///< Creation flag: without the console, on POSIX in its own session.

    virtual ~ProcessLauncher() = default;

    /// The folder of the system's own programs; empty when the system does not tell.
    virtual std::wstring SystemFolder() = 0;

    /// Starts the program of this full path with no inherited handles. The command line begins with the program;
    /// without a working folder it is the caller's. Null: LastError() tells the reason.
    virtual KernelHandle Start(const std::wstring& program, const std::wstring& commandLine,
                               std::uint32_t creationFlags, const wchar_t* workingFolder) = 0;
};

template <>
ProcessLauncher& System<ProcessLauncher>();

} // namespace Platform
