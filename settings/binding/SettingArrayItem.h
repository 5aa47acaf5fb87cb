#pragma once

namespace StrataSettings
{

/// An element of a set-valued setting. The element class T derives from it and has
///   - T(const StrataObject& record), which keeps whatever can be read and reports what breaks its rules,
///   - bool WriteTo(StrataObject& record) const, false when the record could not be filled,
///   - operator<, the order in which a set holds and stores its elements.
class SettingArrayItem
{
protected:
    ~SettingArrayItem() = default;
    SettingArrayItem() = default;
    SettingArrayItem(const SettingArrayItem&) = default;
    SettingArrayItem& operator=(const SettingArrayItem&) = default;
};

} // namespace StrataSettings
