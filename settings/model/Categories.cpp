#include "settings/model/Categories.h"

#include "logging/FunctionLog.h"

#include <algorithm>

namespace Settings
{

namespace
{

constexpr FunctionLog kIsAllowedLog(L"Settings::Categories::IsAllowed");
constexpr FunctionLog kSetCategoryLog(L"Settings::Categories::SetCategory");

/// Where the table has the first category that `matches`; its size when there is none.
template <class Matches>
std::size_t FindInTable(Matches matches)
{
    const auto found = std::find_if(kCategoryNames.begin(), kCategoryNames.end(), matches);
    return static_cast<std::size_t>(found - kCategoryNames.begin());
}

std::size_t FindName(const std::string& name)
{
    return FindInTable([&name](const CategoryName& category) { return category.legacyName == name; });
}

} // namespace

bool Categories::IsAllowed(const std::string& name) const
{
    if (groups.IsBlocked(name))
        return false;
    if (const std::size_t index = FindName(name); index < categories.size())
        return categories[index].allowed.Get();

    LOG(kIsAllowedLog, 2, L"%s: An unknown category '%hs' requested", name.c_str());
    return categories[FindInTable([](const CategoryName& category) { return category.group == Fallback; })]
        .allowed.Get();
}

void Categories::SetCategory(const std::string& name, bool allowed)
{
    groups.SetAllowed(name, allowed);
    if (const std::size_t index = FindName(name); index < categories.size())
        categories[index].allowed.Set(allowed);
    else
        LOG(kSetCategoryLog, 2, L"%s: An unknown category '%hs' requested", name.c_str());
}

} // namespace Settings
