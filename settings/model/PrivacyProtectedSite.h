#pragma once

#include "settings/binding/SettingArrayItem.h"
#include "settings/binding/StrataObject.h"
#include "settings/binding/TypeName.h"

#include <set>
#include <string>

namespace Settings
{

/// An address for which banking protection keeps its privacy protection. In a set it is known by its address.
class PrivacyProtectedSite : public StrataSettings::SettingArrayItem
{
public:
    PrivacyProtectedSite(std::string address, bool enabled);
    explicit PrivacyProtectedSite(const StrataSettings::StrataObject& record);

    bool WriteTo(StrataSettings::StrataObject& record) const;

    friend bool operator<(const PrivacyProtectedSite& left, const PrivacyProtectedSite& right) noexcept
    {
        return left.Address < right.Address;
    }
    friend bool operator==(const PrivacyProtectedSite& left, const PrivacyProtectedSite& right) noexcept
    {
        return left.Address == right.Address && left.enabled == right.enabled;
    }

    std::string Address; // UTF-8, not empty
    bool enabled = false;
};

} // namespace Settings

template <>
inline constexpr const wchar_t* StrataSettings::kTypeName<std::set<Settings::PrivacyProtectedSite>> =
    L"std::set<Settings::PrivacyProtectedSite>";
