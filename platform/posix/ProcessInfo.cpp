#include "platform/ProcessInfo.h"

#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace Platform
{

namespace
{

/// The system does not keep them at hand, and each log line has both. A child that goes on after fork() has others.
struct Ids
{
    std::uint32_t process;
    std::uint32_t thread;
};

thread_local Ids g_ids{0, 0};

const Ids& CachedIds()
{
    static const int s_watched = ::pthread_atfork(nullptr, nullptr, [] { g_ids = {0, 0}; });
    static_cast<void>(s_watched);
    if (g_ids.process == 0)
        g_ids = {static_cast<std::uint32_t>(::getpid()), static_cast<std::uint32_t>(::syscall(SYS_gettid))};
    return g_ids;
}

} // namespace

std::uint32_t ProcessId()
{
    return CachedIds().process;
}

std::uint32_t ThreadId()
{
    return CachedIds().thread;
}

} // namespace Platform
