#pragma once

#include "platform/Service.h"

namespace Platform
{

/// The user's clipboard. UI thread. On POSIX it is the one of the running GUI application, and without one it cannot be
/// opened.
class Clipboard
{
public:
    virtual ~Clipboard() = default;

    /// Opens the clipboard without an owner window. False: another program has it, LastError() tells the reason.
    virtual bool Open() = 0;

    /// Between Open() and Close().
    virtual void Empty() = 0;
    virtual void Close() = 0;
};

template <>
Clipboard& System<Clipboard>();

} // namespace Platform
