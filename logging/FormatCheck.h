#pragma once

#include <cstddef>
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

/// What one argument is to a conversion.
enum class Kind
{
    Integer32,
    Integer64,
    Float,
    WideText,
    NarrowText,
    Pointer,
    Other
};

template <class T>
constexpr Kind KindOf()
{
    if constexpr (std::is_enum_v<T>)
    {
        return std::is_convertible_v<T, int> ? KindOf<std::underlying_type_t<T>>() : Kind::Other;
    }
    else if constexpr (std::is_integral_v<T>)
    {
        return sizeof(T) <= 4 ? Kind::Integer32 : Kind::Integer64;
    }
    else if constexpr (std::is_floating_point_v<T>)
    {
        return sizeof(T) <= sizeof(double) ? Kind::Float : Kind::Other;
    }
    else if constexpr (std::is_pointer_v<T>)
    {
        using Target = std::remove_cv_t<std::remove_pointer_t<T>>;
        return std::is_same_v<Target, wchar_t> ? Kind::WideText
               : std::is_same_v<Target, char>  ? Kind::NarrowText
               : std::is_function_v<Target>    ? Kind::Other
                                               : Kind::Pointer;
    }
    else
    {
        return Kind::Other;
    }
}

constexpr bool IsOneOf(wchar_t character, const wchar_t* set)
{
    for (; *set != 0; ++set)
        if (*set == character)
            return true;
    return false;
}

/// Reads the conversions of a format one after the other.
class Reader
{
public:
    constexpr explicit Reader(const wchar_t* format) : m_at(format) {}

    /// Goes behind the next conversion that takes an argument. False: there is none.
    constexpr bool Next()
    {
        for (; *m_at != 0; ++m_at)
        {
            if (*m_at == L'%')
            {
                ++m_at;
                if (*m_at != L'%')
                {
                    ReadConversion();
                    return true;
                }
            }
        }
        return false;
    }

    /// Whether the conversion just read takes an argument of this kind.
    constexpr bool Takes(Kind kind) const
    {
        if (m_type == L's' || m_type == L'S')
        {
            const bool wide = m_size == L'l' || (m_size == 0 && m_type == L's');
            return (wide || m_size == 0 || m_size == L'h') && kind == (wide ? Kind::WideText : Kind::NarrowText);
        }
        if (m_type == L'p')
            return m_size == 0 && (kind == Kind::Pointer || kind == Kind::WideText || kind == Kind::NarrowText);
        if (IsOneOf(m_type, L"diuxXo"))
        {
            const bool is64 = m_size == L'L' || (m_size == L'I' && sizeof(void*) == 8);
            return kind == (is64 ? Kind::Integer64 : Kind::Integer32);
        }
        return m_size == 0 &&
               ((m_type == L'c' && kind == Kind::Integer32) || (IsOneOf(m_type, L"eEfFgGaA") && kind == Kind::Float));
    }

private:
    constexpr void ReadConversion()
    {
        while (IsOneOf(*m_at, L"-+ #0123456789."))
            ++m_at;
        m_size = 0;
        if (*m_at == L'h' || *m_at == L'l' || *m_at == L'I')
            m_size = *m_at++;
        if (m_size == L'l' && *m_at == L'l')
        {
            m_size = L'L';
            ++m_at;
        }
        else if (m_size == L'I' && m_at[0] == L'6' && m_at[1] == L'4')
        {
            m_size = L'L';
            m_at += 2;
        }
        m_type = *m_at;
        if (m_type != 0)
            ++m_at;
    }

    const wchar_t* m_at;
    wchar_t m_size = 0; // h, l, I as written; L for 64 bits
    wchar_t m_type = 0;
};

template <class... Arguments>
constexpr bool Matches(const wchar_t* format, Types<Arguments...>)
{
    Reader reader(format);
    if (!reader.Next() || !reader.Takes(Kind::WideText)) // the function's name
        return false;
    const bool matches = ((reader.Next() && reader.Takes(KindOf<Arguments>())) && ...);
    return matches && !reader.Next();
}

} // namespace FormatCheck

} // namespace NlOrbLogging
