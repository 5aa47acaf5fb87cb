#pragma once

namespace Platform
{

/// An invisible window in the foreground, which a prompt for elevation needs as its owner, as long as this object
/// lives; without an entry in the taskbar. UI thread. Where no window can be made the prompt has to do without; POSIX
/// has no such prompt and makes none.
class ElevationOwner
{
public:
    ElevationOwner();
    ~ElevationOwner();
    ElevationOwner(const ElevationOwner&) = delete;
    ElevationOwner& operator=(const ElevationOwner&) = delete;

private:
    [[maybe_unused]] void* m_window = nullptr; // a platform may have none
};

} // namespace Platform
