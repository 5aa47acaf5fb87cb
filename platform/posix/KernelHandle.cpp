#include "platform/KernelHandle.h"

#include "platform/posix/KernelObject.h"

#include <cerrno>

namespace Platform
{

bool Close(KernelHandle handle)
{
    if (!handle)
    {
        errno = EBADF;
        return false;
    }
    delete static_cast<KernelObject*>(handle);
    return true;
}

bool Signal(KernelHandle handle)
{
    if (!handle || !static_cast<KernelObject*>(handle)->Signal())
    {
        errno = EBADF;
        return false;
    }
    return true;
}

} // namespace Platform
