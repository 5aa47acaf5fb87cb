#include "platform/LastError.h"

#include <cerrno>

namespace Platform
{

std::uint32_t LastError()
{
    return static_cast<std::uint32_t>(errno);
}

void SetLastError(std::uint32_t error)
{
    errno = static_cast<int>(error);
}

} // namespace Platform
