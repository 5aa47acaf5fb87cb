#include "logging/Logger.h"

namespace NlOrbLogging
{

bool Logger::IsEnabled(int level)
{
    return !IsFiltered(level);
}

bool Logger::IsFiltered(int level)
{
    return level > m_threshold.load(std::memory_order_relaxed);
}

const wchar_t* Logger::LevelTag(int level)
{
    switch (level)
    {
    case Fatal:
        return L"*F";
    case Error:
        return L"*E";
    case Warning:
        return L".W";
    case Information:
        return L" I";
    case Debug:
        return L" D";
    case Verbose:
        return L" V";
    default:
        return L"  ";
    }
}

int Logger::BannerLevel(unsigned flags)
{
    return static_cast<int>(((flags & BannerAtDebug) | 8) >> 1);
}

void Logger::LogA(int level, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    LogVA(level, format, arguments);
    va_end(arguments);
}

void Logger::Log(int level, const wchar_t* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    LogV(level, format, arguments);
    va_end(arguments);
}

} // namespace NlOrbLogging
