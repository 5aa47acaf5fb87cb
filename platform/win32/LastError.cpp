#include "platform/LastError.h"

#include "platform/win32/Win32.h"

namespace Platform
{

std::uint32_t LastError()
{
    return ::GetLastError();
}

void SetLastError(std::uint32_t error)
{
    ::SetLastError(error);
}

} // namespace Platform
