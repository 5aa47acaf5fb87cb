#include "platform/KernelHandle.h"

#include "platform/win32/Win32.h"

namespace Platform
{

bool Close(KernelHandle handle)
{
    return ::CloseHandle(handle) != FALSE;
}

bool Signal(KernelHandle handle)
{
    return ::SetEvent(handle) != FALSE;
}

} // namespace Platform
