#pragma once

#include "settings/binding/SettingArrayItem.h"
#include "settings/binding/StrataObject.h"
#include "settings/binding/TypeName.h"

#include <set>
#include <string>

namespace Settings
{

/// A web address that a parent allows or blocks. In a set it is known by its address alone.
class Site : public StrataSettings::SettingArrayItem
{
public:
    Site(std::string url, bool allowed, std::string label);
    explicit Site(const StrataSettings::StrataObject& record);

    /// What a set is searched with: equivalent to the site of this address, which may be any text. No value.
    static Site Key(std::string url);

    /// Whether a site may have this address: it is not empty, and holds no NUL, at which the store would cut it.
    static bool IsAddress(const std::string& text) noexcept
    {
        return !text.empty() && text.find('\0') == std::string::npos;
    }

    bool WriteTo(StrataSettings::StrataObject& record) const;

    friend bool operator<(const Site& left, const Site& right) noexcept { return left.Url < right.Url; }
    friend bool operator==(const Site& left, const Site& right) noexcept
    {
        return left.Url == right.Url && left.allowed == right.allowed && left.label == right.label;
    }

    std::string Url; // UTF-8, not empty
    bool allowed = false;
    std::string label; // UTF-8, what is shown

private:
    Site() = default;
};

} // namespace Settings

template <>
inline constexpr const wchar_t* StrataSettings::kTypeName<std::set<Settings::Site>> = L"std::set<Settings::Site>";
