#pragma once

#include <atomic>
#include <new>

namespace Platform
{

namespace Detail
{

template <class Service>
inline std::atomic<Service*> g_replacement{nullptr};

/// An object that is made on first use, owns no memory and is never destroyed, so that late calls find it.
template <class Object>
Object& NoDestructor()
{
    alignas(Object) static unsigned char s_storage[sizeof(Object)];
    static auto* const s_object = ::new (s_storage) Object;
    return *s_object;
}

} // namespace Detail

/// The operating system's own implementation of a service; each platform defines one per service, made on first use
/// and never destroyed.
template <class Service>
Service& System();

/// A service: an interface to the operating system that a test can stand in for.
template <class Service>
Service& Get()
{
    Service* const replacement = Detail::g_replacement<Service>.load(std::memory_order_acquire);
    return replacement ? *replacement : System<Service>();
}

/// Stands in for a service as long as it lives.
template <class Service>
class ServiceReplacement
{
public:
    explicit ServiceReplacement(Service& replacement)
        : m_previous(Detail::g_replacement<Service>.exchange(&replacement))
    {}
    ~ServiceReplacement() { Detail::g_replacement<Service>.store(m_previous); }
    ServiceReplacement(const ServiceReplacement&) = delete;
    ServiceReplacement& operator=(const ServiceReplacement&) = delete;

private:
    Service* const m_previous;
};

} // namespace Platform
