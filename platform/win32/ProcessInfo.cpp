#include "platform/ProcessInfo.h"

#include "platform/win32/Win32.h"

namespace Platform
{

std::uint32_t ProcessId()
{
    return ::GetCurrentProcessId();
}

std::uint32_t ThreadId()
{
    return ::GetCurrentThreadId();
}

} // namespace Platform
