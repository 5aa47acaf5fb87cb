#pragma once

#include "platform/KernelHandle.h"

#include <cstdint>

/// Starts a program of the system's folder. `arguments` and `workingFolder` may be null; for the flags see
/// Platform::ProcessLauncher. The caller owns the process handle that is returned. Null: the process was not started,
/// Platform::LastError() tells the reason.
Platform::KernelHandle LaunchProcess(const wchar_t* program, const wchar_t* arguments, std::uint32_t creationFlags,
                                     const wchar_t* workingFolder);
