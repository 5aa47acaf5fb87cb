#include "platform/NamedMutex.h"

#include "platform/posix/SharedPage.h"
#include "text/Utf.h"

#include <pthread.h>

#include <cerrno>
#include <ctime>

namespace Platform
{

namespace
{

struct Shared
{
    pthread_mutex_t mutex;
    std::uint64_t number; // memory is zero at first
};

bool InitialiseMutex(void* memory)
{
    pthread_mutexattr_t attributes;
    ::pthread_mutexattr_init(&attributes);
    ::pthread_mutexattr_setpshared(&attributes, PTHREAD_PROCESS_SHARED);
    ::pthread_mutexattr_setrobust(&attributes, PTHREAD_MUTEX_ROBUST);
    errno = ::pthread_mutex_init(&static_cast<Shared*>(memory)->mutex, &attributes);
    ::pthread_mutexattr_destroy(&attributes);
    return errno == 0;
}

timespec After(std::uint32_t milliseconds)
{
    timespec time{};
    ::clock_gettime(CLOCK_MONOTONIC, &time);
    time.tv_sec += milliseconds / 1000;
    time.tv_nsec += static_cast<long>(milliseconds % 1000) * 1000000;
    if (time.tv_nsec >= 1000000000)
    {
        ++time.tv_sec;
        time.tv_nsec -= 1000000000;
    }
    return time;
}

} // namespace

class NamedMutex::Object
{
public:
    int Open(const std::wstring& name, bool create)
    {
        return m_page.Open("mutex", Text::ToUtf8(name), sizeof(Shared), create ? InitialiseMutex : nullptr);
    }

    pthread_mutex_t* Mutex() const { return &Memory().mutex; }
    std::uint64_t& Number() const { return Memory().number; }

private:
    Shared& Memory() const { return *static_cast<Shared*>(m_page.Memory()); }

    SharedPage m_page;
};

NamedMutex::NamedMutex() = default;
NamedMutex::~NamedMutex() = default;

std::uint32_t NamedMutex::Create(const std::wstring& name, const wchar_t*)
{
    m_object = std::make_unique<Object>();
    const int error = m_object->Open(name, true);
    if (error != 0)
        m_object.reset();
    return static_cast<std::uint32_t>(error);
}

std::uint32_t NamedMutex::Open(const std::wstring& name)
{
    m_object = std::make_unique<Object>();
    const int error = m_object->Open(name, false);
    if (error != 0)
        m_object.reset();
    return static_cast<std::uint32_t>(error);
}

bool NamedMutex::IsAccessDenied(std::uint32_t error)
{
    return error == EACCES;
}

NamedMutex::Wait NamedMutex::Lock(std::uint32_t timeoutMs)
{
    int error = ::pthread_mutex_trylock(m_object->Mutex());
    if (error == EBUSY)
    {
        const timespec deadline = After(timeoutMs);
        error = ::pthread_mutex_clocklock(m_object->Mutex(), CLOCK_MONOTONIC, &deadline);
    }
    switch (error)
    {
    case 0:
        return Wait::Acquired;
    case EOWNERDEAD:
        ::pthread_mutex_consistent(m_object->Mutex());
        return Wait::Abandoned;
    case ETIMEDOUT:
        return Wait::TimedOut;
    default:
        return Wait::Failed;
    }
}

void NamedMutex::Unlock()
{
    ::pthread_mutex_unlock(m_object->Mutex());
}

std::uint64_t NamedMutex::Number() const
{
    return m_object->Number();
}

void NamedMutex::SetNumber(std::uint64_t number)
{
    m_object->Number() = number;
}

} // namespace Platform
