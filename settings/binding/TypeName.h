#pragma once

#include "logging/LogName.h"
#include "settings/binding/StoreTypes.h"

#include <string>

namespace StrataSettings
{

/// How log names spell a type. An element class of a set specialises it beside its own declaration.
template <class T>
struct TypeName;

template <>
struct TypeName<bool>
{
    static constexpr NlOrbLogging::LogName kValue{L"bool"};
};

template <>
struct TypeName<int>
{
    static constexpr NlOrbLogging::LogName kValue{L"int"};
};

template <>
struct TypeName<std::int64_t>
{
    static constexpr NlOrbLogging::LogName kValue{L"__int64"};
};

template <>
struct TypeName<std::string>
{
    static constexpr NlOrbLogging::LogName kValue{L"std::string"};
};

template <>
struct TypeName<std::wstring>
{
    static constexpr NlOrbLogging::LogName kValue{L"std::wstring"};
};

template <>
struct TypeName<Minutes>
{
    static constexpr NlOrbLogging::LogName kValue{L"std::chrono::duration<int,std::ratio<60>>"};
};

template <>
struct TypeName<Seconds>
{
    static constexpr NlOrbLogging::LogName kValue{L"std::chrono::duration<__int64>"};
};

template <>
struct TypeName<TimePoint>
{
    static constexpr NlOrbLogging::LogName kValue{L"std::chrono::system_clock::time_point"};
};

} // namespace StrataSettings
