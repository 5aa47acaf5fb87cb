#pragma once

#include <cstddef>

namespace NlOrbLogging
{

/// A text of `Length` characters that is joined at compile time: the log names of class templates.
///
///     template <class T>
///     inline constexpr auto LoadName = L"StrataSettings::Property<" + TypeName<T> + L">::Load";
///
/// where TypeName<T> is another such text, made by LogName(L"bool"). The pointer that String() gives is as lasting as
/// the object.
template <std::size_t Length>
class LogName
{
public:
    constexpr LogName() = default;
    constexpr explicit LogName(const wchar_t (&text)[Length + 1]) { Put(0, text, Length); }

    constexpr const wchar_t* String() const { return m_text; }

    constexpr void Put(std::size_t at, const wchar_t* text, std::size_t count)
    {
        for (std::size_t i = 0; i < count; ++i)
            m_text[at + i] = text[i];
    }

private:
    wchar_t m_text[Length + 1]{};
};

template <std::size_t Size>
LogName(const wchar_t (&)[Size]) -> LogName<Size - 1>;

template <std::size_t Left, std::size_t Right>
constexpr auto operator+(const LogName<Left>& left, const LogName<Right>& right)
{
    LogName<Left + Right> joined;
    joined.Put(0, left.String(), Left);
    joined.Put(Left, right.String(), Right);
    return joined;
}

template <std::size_t Left, std::size_t RightSize>
constexpr auto operator+(const LogName<Left>& left, const wchar_t (&right)[RightSize])
{
    return left + LogName(right);
}

template <std::size_t LeftSize, std::size_t Right>
constexpr auto operator+(const wchar_t (&left)[LeftSize], const LogName<Right>& right)
{
    return LogName(left) + right;
}

} // namespace NlOrbLogging
