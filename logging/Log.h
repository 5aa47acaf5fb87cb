#pragma once

#include "logging/Logger.h"

#include <atomic>
#include <memory>

/// The process's log. Any thread may call these at any time, before initialisation and while the process ends, too;
/// nothing fails, and the thread's last error is left as it was. Classes log through logging/FunctionLog.h.
namespace NlOrbLogging
{

namespace Detail
{

extern std::atomic<Logger*> g_logger; ///< Null until the logger is first asked for.
Logger& CreateLogger();

} // namespace Detail

/// The one logger of this process, made on first use.
inline Logger& GetLogger()
{
    Logger* const logger = Detail::g_logger.load(std::memory_order_acquire);
    return logger ? *logger : Detail::CreateLogger();
}

/// Puts another logger in place of the present one, which is destroyed; null: back to the process's own. No other
/// thread may log meanwhile.
void ReplaceLogger(std::unique_ptr<Logger> replacement);

void Initialize(const wchar_t* component, const wchar_t* module, int defaultLevel, unsigned flags);
void InitializeA(const char* component, const char* module, int defaultLevel, unsigned flags);
void Log(int level, const wchar_t* format, ...);
void LogA(int level, const char* format, ...);
void Flush();

/// Whether a line of this level would be written.
inline bool IsEnabled(int level)
{
    return GetLogger().IsEnabled(level);
}

} // namespace NlOrbLogging
