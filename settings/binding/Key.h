#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace StrataSettings
{

/// A setting's name in the store: dotted lower-case segments, unique within a scope.
class Key
{
public:
    Key(const wchar_t* text) : m_text(text) {}
    Key(std::wstring text) : m_text(std::move(text)) {}

    const std::wstring& String() const noexcept { return m_text; }
    const wchar_t* c_str() const noexcept { return m_text.c_str(); }

private:
    std::wstring m_text;
};

} // namespace StrataSettings
