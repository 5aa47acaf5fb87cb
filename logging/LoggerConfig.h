#pragma once

#include <string>
#include <utility>

namespace NlOrbLogging
{

/// What a session of the log was initialised with.
struct LoggerConfig
{
    std::wstring component;
    std::wstring module;
    int defaultLevel = 0;
    unsigned flags = 0;

    void Swap(LoggerConfig& other) noexcept
    {
        std::swap(component, other.component);
        std::swap(module, other.module);
        std::swap(defaultLevel, other.defaultLevel);
        std::swap(flags, other.flags);
    }
};

} // namespace NlOrbLogging
