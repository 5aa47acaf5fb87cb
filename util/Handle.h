#pragma once

#include "platform/KernelHandle.h"

namespace RAII
{

/// Owns a kernel handle; null when empty.
class Handle
{
public:
    explicit Handle(Platform::KernelHandle handle = nullptr) : m_handle(handle) {}
    virtual ~Handle();
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    /// Closes the handle held and takes this one; the handle held is refused.
    Handle& operator=(Platform::KernelHandle handle);

    /// Sets the event that the handle refers to.
    bool Signal();

    /// Closes and empties. False: the system refused; an empty one stays as it is.
    bool Close();

    Platform::KernelHandle Get() const { return m_handle; }

private:
    Platform::KernelHandle m_handle;
};

} // namespace RAII
