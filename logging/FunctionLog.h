#pragma once

#include "logging/FormatCheck.h"
#include "logging/Log.h"
#include "platform/LastError.h"

#include <string>
#include <utility>

/// The log name of a function ("Class::Method"), which begins each of its lines. The name is a literal or lives as long
/// as a static.
class FunctionLog
{
public:
    explicit constexpr FunctionLog(const wchar_t* name) : m_name(name) {}
    constexpr const wchar_t* Name() const { return m_name; }

    /// What LOG() calls, with the format checked.
    template <class... Arguments>
    void Write(int level, const wchar_t* format, Arguments... arguments) const
    {
        NlOrbLogging::Log(level, format, m_name, arguments...);
    }

private:
    const wchar_t* m_name;
};

/// The same, and a trace line on entry.
class EntryLog : public FunctionLog
{
public:
    explicit EntryLog(const wchar_t* name) : FunctionLog(name)
    {
        if (NlOrbLogging::IsEnabled(NlOrbLogging::Debug))
            NlOrbLogging::Log(NlOrbLogging::Debug, L"%s: ", name);
    }
};

/// The log name of a function of a class whose own name is known only at run time, such as a template's. Made within
/// LOG() it is put together for the lines that are written, and only for them.
class MethodLog
{
public:
    MethodLog(std::wstring className, const wchar_t* function) : m_name(std::move(className) + L"::" + function) {}

    template <class... Arguments>
    void Write(int level, const wchar_t* format, Arguments... arguments) const
    {
        NlOrbLogging::Log(level, format, m_name.c_str(), arguments...);
    }

private:
    std::wstring m_name;
};

/// LOG(log, level, format, arguments...): writes a line of the function that `log` names. The format is a wide literal
/// that begins with "%s: ", which receives the name; the arguments are checked against the rest of it at compile time
/// (see Platform::Format() for the meanings). `log` and the arguments are evaluated only when the level is written. The
/// thread's last error is left as it was, whatever they call.
#define LOG(log, level, ...)                                                                                           \
    do                                                                                                                 \
    {                                                                                                                  \
        static_assert(NlOrbLogging::FormatCheck::Matches(NL_LOG_EXPAND(NL_LOG_FIRST(__VA_ARGS__, ~)),                  \
                                                         decltype(NlOrbLogging::FormatCheck::TypesOf(__VA_ARGS__)){}), \
                      "the arguments are not those of the format");                                                    \
        if (NlOrbLogging::IsEnabled(level))                                                                            \
        {                                                                                                              \
            const Platform::LastErrorGuard nlLogErrorGuard;                                                            \
            (log).Write(level, __VA_ARGS__);                                                                           \
        }                                                                                                              \
    } while (false)

#define NL_LOG_FIRST(first, ...) first

/// MSVC hands __VA_ARGS__ on to another macro as one argument, and takes it apart when it reads the result again.
#define NL_LOG_EXPAND(text) text
