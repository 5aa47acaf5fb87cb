#pragma once

#include "text/FormatConversion.h"

#include <type_traits>

namespace NlOrbLogging
{

/// Whether the arguments of a log call are what its format asks for, with the meanings of Platform::Format(), decided
/// at compile time. Of a type that differs between the platforms, such as long, the size counts.
namespace FormatCheck
{

template <class... Arguments>
struct Types
{};

/// The types that a call's arguments have when they are passed on; named in decltype only.
template <class Format, class... Arguments>
Types<Arguments...> TypesOf(Format, Arguments...);

/// Whether a conversion may take an argument of this type.
template <class T>
constexpr bool Suits(Text::FormatArgument wanted)
{
    using Text::FormatArgument;
    if constexpr (std::is_enum_v<T>)
    {
        return std::is_convertible_v<T, int> && Suits<std::underlying_type_t<T>>(wanted);
    }
    else if constexpr (std::is_integral_v<T>)
    {
        return wanted == (sizeof(T) <= 4 ? FormatArgument::Int32 : FormatArgument::Int64);
    }
    else if constexpr (std::is_pointer_v<T>)
    {
        using Target = std::remove_cv_t<std::remove_pointer_t<T>>;
        return (wanted == FormatArgument::WideString && std::is_same_v<Target, wchar_t>) ||
               (wanted == FormatArgument::NarrowString && std::is_same_v<Target, char>) ||
               (wanted == FormatArgument::Pointer && !std::is_function_v<Target>);
    }
    else
    {
        return false;
    }
}

/// Reads the conversions of a format one after the other.
class Reader
{
public:
    constexpr explicit Reader(const wchar_t* format) : m_at(format) {}

    /// What the next conversion takes, None where there is none.
    constexpr Text::FormatArgument Next()
    {
        while (*m_at != 0)
        {
            if (*m_at++ != L'%')
                continue;
            if (*m_at == L'%')
            {
                ++m_at;
                continue;
            }
            Text::FormatConversion conversion;
            m_at = Text::ReadConversion(m_at, conversion);
            m_allKnown = m_allKnown && conversion.Argument(true) != Text::FormatArgument::None;
            return conversion.Argument(true);
        }
        return Text::FormatArgument::None;
    }

    /// Whether nothing is left, and all that was read is known.
    constexpr bool IsThrough() { return Next() == Text::FormatArgument::None && m_allKnown; }

private:
    const wchar_t* m_at;
    bool m_allKnown = true;
};

template <class... Arguments>
constexpr bool Matches(const wchar_t* format, Types<Arguments...>)
{
    Reader reader(format);
    return reader.Next() == Text::FormatArgument::WideString // the function's name
           && (Suits<Arguments>(reader.Next()) && ...) && reader.IsThrough();
}

} // namespace FormatCheck

} // namespace NlOrbLogging
