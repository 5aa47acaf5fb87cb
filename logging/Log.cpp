#include "logging/Log.h"

#include "logging/LoggerWin.h"
#include "platform/LastError.h"

#include <new>
#include <thread>

namespace NlOrbLogging
{

namespace
{

enum Creation
{
    None,
    Running,
    Ready
};

std::atomic<int> g_creation{None};

/// The process's own logger is never destroyed as an object, only shut down: a late call finds it closed.
alignas(LoggerWin) unsigned char g_storage[sizeof(LoggerWin)];

LoggerWin& OwnLogger()
{
    int expected = None;
    if (g_creation.compare_exchange_strong(expected, Running))
    {
        const Platform::LastErrorGuard guard;
        ::new (g_storage) LoggerWin;
        g_creation.store(Ready);
    }
    while (g_creation.load() != Ready)
        std::this_thread::yield();
    return *std::launder(reinterpret_cast<LoggerWin*>(g_storage));
}

/// Ends the log with the process or with the library that holds this code.
class ProcessEnd
{
public:
    ~ProcessEnd()
    {
        if (!Detail::g_logger.load())
            return;
        ReplaceLogger(nullptr);
        OwnLogger().ShutdownAtExit();
    }
};

ProcessEnd g_processEnd;

} // namespace

namespace Detail
{

std::atomic<Logger*> g_logger{nullptr};

Logger& CreateLogger()
{
    Logger* expected = nullptr;
    g_logger.compare_exchange_strong(expected, &OwnLogger());
    return *g_logger.load();
}

} // namespace Detail

void ReplaceLogger(std::unique_ptr<Logger> replacement)
{
    LoggerWin& own = OwnLogger();
    Logger* const next = replacement ? replacement.release() : &own;
    Logger* const previous = Detail::g_logger.exchange(next);
    if (previous != next && previous == &own)
        own.Shutdown();
    else if (previous != next)
        delete previous;
}

void Initialize(const wchar_t* component, const wchar_t* module, int defaultLevel, unsigned flags)
{
    GetLogger().Initialize(component, module, defaultLevel, flags);
}

void InitializeA(const char* component, const char* module, int defaultLevel, unsigned flags)
{
    GetLogger().InitializeA(component, module, defaultLevel, flags);
}

void Log(int level, const wchar_t* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    GetLogger().LogV(level, format, arguments);
    va_end(arguments);
}

void LogA(int level, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    GetLogger().LogVA(level, format, arguments);
    va_end(arguments);
}

void Flush()
{
    GetLogger().Flush();
}

} // namespace NlOrbLogging
