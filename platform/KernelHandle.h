#pragma once

namespace Platform
{

/// A kernel object that the process has open: a HANDLE on Windows, a KernelObject on POSIX. Null: none.
using KernelHandle = void*;

/// Ends the caller's use of the object. False: the system refused.
bool Close(KernelHandle handle);

/// Sets the event that the handle refers to. False: it is not an event, or may not be set.
bool Signal(KernelHandle handle);

} // namespace Platform
