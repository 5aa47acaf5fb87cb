#include "util/Handle.h"

#include "logging/FunctionLog.h"

#include <utility>

namespace RAII
{

Handle::~Handle()
{
    Handle::Close();
}

Handle& Handle::operator=(Platform::KernelHandle handle)
{
    const FunctionLog log(L"RAII::Handle::operator =");
    if (handle == m_handle)
    {
        LOG(log, 2, L"%s: Invalid assingment, pointers are equal! %p==%p", m_handle, handle);
        return *this;
    }
    Close();
    m_handle = handle;
    return *this;
}

bool Handle::Signal()
{
    return Platform::Signal(m_handle);
}

bool Handle::Close()
{
    return !m_handle || Platform::Close(std::exchange(m_handle, nullptr));
}

} // namespace RAII
