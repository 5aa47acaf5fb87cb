#pragma once

namespace Platform
{

/// A kernel object that the process has open: a HANDLE on Windows, a KernelObject on POSIX. Null: none.
using KernelHandle = void*;

/// Ends the use of the object through this handle. False: the system refused, LastError() tells the reason.
bool Close(KernelHandle handle);

/// Sets the event that the handle refers to. False: it is not an event, or may not be set; see LastError().
bool Signal(KernelHandle handle);

} // namespace Platform
