#include "tests/settings/OtherValue.h"

#include "settings/model/VdnSettings.h"

#include <gtest/gtest.h>

using namespace StrataSettings;

namespace
{

void Alter(bool& value)
{
    value = !value;
}

void Alter(int& value)
{
    value = -value - 7;
}

void Alter(std::int64_t& value)
{
    value = -value - 5'000'000'000;
}

void Alter(std::string& value)
{
    value += "\xC3\xA4\xF0\x9F\x98\x80 \"x\"\\";
}

void Alter(std::wstring& value)
{
    value += L"\u00E4\"x\"\\Global";
}

template <class Representation, class Period>
void Alter(std::chrono::duration<Representation, Period>& value)
{
    value = -value - std::chrono::duration<Representation, Period>(90'001);
}

void Alter(TimePoint& value)
{
    value += Ticks(133'000'000'000'000'001);
}

void Alter(std::set<Settings::Site>& value)
{
    value.emplace("b\xC3\xBC"
                  "cher.example/" +
                      std::to_string(value.size()),
                  true, "\"B\"");
    value.emplace("a.example", false, "");
}

void Alter(std::set<Settings::PrivacyProtectedSite>& value)
{
    value.emplace("bank" + std::to_string(value.size()) + ".example", true);
}

void Alter(std::set<Settings::Curfew>& value)
{
    value.emplace(static_cast<int>(value.size() % 22), 23);
}

void Alter(std::set<Settings::DailyCounter>& value)
{
    Settings::DailyCounter day(2'460'000 + static_cast<std::int64_t>(value.size()));
    day.websitesChecked = 5'000'000'000;
    day.wtsBlocks = 1;
    value.insert(day);
}

/// Calls `use(Property<T>&)` with the property's real type.
template <class Use, class... Types>
void WithType(PropertyBase& property, Use&& use)
{
    bool known = false;
    const auto tryType = [&](auto* typed) {
        if (typed)
        {
            use(*typed);
            known = true;
        }
    };
    (tryType(dynamic_cast<Property<Types>*>(&property)), ...);
    EXPECT_TRUE(known);
}

template <class Use>
void WithTypeOf(const PropertyBase& property, Use&& use)
{
    WithType<Use, bool, int, std::int64_t, std::string, std::wstring, Minutes, Seconds, TimePoint,
             std::set<Settings::Site>, std::set<Settings::PrivacyProtectedSite>, std::set<Settings::Curfew>,
             std::set<Settings::DailyCounter>>(const_cast<PropertyBase&>(property), std::forward<Use>(use));
}

} // namespace

bool ChangeToAnotherValue(PropertyBase& property)
{
    SetResult result = SetResult::Unchanged;
    WithTypeOf(property, [&](auto& typed) {
        auto value = typed.Get();
        Alter(value);
        result = typed.Set(value);
    });
    return result == SetResult::Stored;
}

bool HoldSameValue(const PropertyBase& left, const PropertyBase& right)
{
    bool same = false;
    WithTypeOf(left, [&](auto& typed) {
        using Typed = std::remove_reference_t<decltype(typed)>;
        same = typed.Get() == dynamic_cast<const Typed&>(right).Get();
    });
    return same;
}

std::wstring TypeNameOf(const PropertyBase& property)
{
    std::wstring name;
    WithTypeOf(property, [&](auto& typed) { name = kTypeName<decltype(typed.Get())>; });
    return name;
}
