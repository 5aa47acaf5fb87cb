#include "logging/LoggerWin.h"

#include "platform/LastError.h"
#include "platform/Text.h"

namespace NlOrbLogging
{

LoggerWin::LoggerWin() = default;

LoggerWin::~LoggerWin()
{
    Shutdown();
}

void LoggerWin::InitializeA(const char* component, const char* module, int defaultLevel, unsigned flags)
{
    const Platform::LastErrorGuard guard;
    Initialize(Platform::FromAnsi(component).c_str(), Platform::FromAnsi(module).c_str(), defaultLevel, flags);
}

void LoggerWin::Initialize(const wchar_t* component, const wchar_t* module, int defaultLevel, unsigned flags)
{
    const std::lock_guard lock(m_lock);
    m_config.component = component;
    m_config.module = module;
    m_config.defaultLevel = defaultLevel;
    m_config.flags = flags;
    m_threshold = defaultLevel;
}

void LoggerWin::Shutdown() {}

void LoggerWin::Flush() {}

void LoggerWin::LogV(int, const wchar_t*, va_list) {}

void LoggerWin::LogVA(int, const char*, va_list) {}

} // namespace NlOrbLogging
