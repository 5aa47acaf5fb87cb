#pragma once

#include "platform/KernelHandle.h"
#include "platform/Service.h"

namespace Platform
{

/// Events that processes share by name. They stay set until somebody resets them. Handles are closed by Close(); null
/// is a failure, LastError() tells the reason. Any thread.
///
/// On POSIX a name is shared by the processes of one user, and ends with the last one that has it open.
class NamedEvents
{
public:
    virtual ~NamedEvents() = default;

    /// Creates the event, unset, or opens it if it exists.
    virtual KernelHandle Create(const wchar_t* name) = 0;

    /// Opens an event that exists, with the right to set it.
    virtual KernelHandle Open(const wchar_t* name) = 0;

    /// Of a handle that Create() gave.
    virtual bool IsSet(KernelHandle event) = 0;
};

template <>
NamedEvents& System<NamedEvents>();

} // namespace Platform
