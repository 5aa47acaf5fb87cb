#pragma once

namespace Platform
{

/// What a KernelHandle refers to on POSIX; Close() deletes it.
class KernelObject
{
public:
    KernelObject() = default;
    virtual ~KernelObject() = default;
    KernelObject(const KernelObject&) = delete;
    KernelObject& operator=(const KernelObject&) = delete;

    /// Of an event. False: it is something else.
    virtual bool Signal() { return false; }
};

} // namespace Platform
