#pragma once

#include <string>

namespace NlOrbLogging
{

/// What a session of the log was initialised with.
struct LoggerConfig
{
    std::wstring component;
    std::wstring module;
    int defaultLevel = 0;
    unsigned flags = 0;
};

} // namespace NlOrbLogging
