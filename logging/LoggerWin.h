#pragma once

#include "logging/Logger.h"
#include "logging/LoggerConfig.h"

#include <mutex>

namespace NlOrbLogging
{

/// The product's logger.
class LoggerWin : public Logger
{
public:
    LoggerWin();
    ~LoggerWin() override;

    void InitializeA(const char* component, const char* module, int defaultLevel, unsigned flags) override;
    void Initialize(const wchar_t* component, const wchar_t* module, int defaultLevel, unsigned flags) override;
    void Shutdown() override;
    void Flush() override;
    void LogV(int level, const wchar_t* format, va_list arguments) override;
    void LogVA(int level, const char* format, va_list arguments) override;

private:
    std::mutex m_lock;
    LoggerConfig m_config;
};

} // namespace NlOrbLogging
