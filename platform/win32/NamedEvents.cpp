#include "platform/NamedEvents.h"

#include "platform/win32/Win32.h"

namespace Platform
{

namespace
{

class WindowsNamedEvents : public NamedEvents
{
public:
    KernelHandle Create(const wchar_t* name) override { return ::CreateEventW(nullptr, TRUE, FALSE, name); }
    KernelHandle Open(const wchar_t* name) override { return ::OpenEventW(EVENT_MODIFY_STATE, FALSE, name); }
    bool IsSet(KernelHandle event) override { return ::WaitForSingleObject(event, 0) == WAIT_OBJECT_0; }
};

} // namespace

template <>
NamedEvents& System<NamedEvents>()
{
    return Detail::NoDestructor<WindowsNamedEvents>();
}

} // namespace Platform
