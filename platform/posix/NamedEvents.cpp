#include "platform/NamedEvents.h"

#include "platform/posix/KernelObject.h"
#include "platform/posix/SharedPage.h"
#include "text/Utf.h"

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <memory>
#include <new>

namespace Platform
{

namespace
{

using State = std::atomic<std::uint32_t>;
static_assert(State::is_always_lock_free, "processes share it");

bool InitialiseState(void* memory)
{
    ::new (memory) State(0);
    return true;
}

class Event : public KernelObject
{
public:
    int Open(const wchar_t* name, bool create)
    {
        return m_page.Open("event", Text::ToUtf8(name), sizeof(State), create ? InitialiseState : nullptr);
    }

    bool Signal() override
    {
        Value() = 1;
        return true;
    }
    bool IsSet() { return Value() != 0; }

private:
    State& Value() { return *static_cast<State*>(m_page.Memory()); }

    SharedPage m_page;
};

KernelHandle OpenEvent(const wchar_t* name, bool create)
{
    auto event = std::make_unique<Event>();
    const int error = event->Open(name, create);
    errno = error;
    return error == 0 ? static_cast<KernelObject*>(event.release()) : nullptr;
}

class PosixNamedEvents : public NamedEvents
{
public:
    KernelHandle Create(const wchar_t* name) override { return OpenEvent(name, true); }
    KernelHandle Open(const wchar_t* name) override { return OpenEvent(name, false); }
    bool IsSet(KernelHandle event) override { return static_cast<Event*>(static_cast<KernelObject*>(event))->IsSet(); }
};

} // namespace

template <>
NamedEvents& System<NamedEvents>()
{
    return Detail::NoDestructor<PosixNamedEvents>();
}

} // namespace Platform
