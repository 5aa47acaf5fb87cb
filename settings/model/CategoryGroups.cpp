#include "settings/model/CategoryGroups.h"

#include <algorithm>

namespace Settings
{

namespace
{

std::vector<Category*> MembersOf(CategoryGroupNumber group, CategoryArray& categories)
{
    std::vector<Category*> members;
    for (Category& category : categories)
        if (category.name.group == group)
            members.push_back(&category);
    return members;
}

} // namespace

CategoryGroups::CategoryGroups(CategoryArray& categories)
    : m_groups{{{"disturbing", MembersOf(Disturbing, categories)}, {"shopping", MembersOf(Shopping, categories)}}}
{}

bool CategoryGroups::IsBlocked(const std::string& name) const
{
    return std::any_of(
        m_groups.begin(), m_groups.end(),
        [&name](const CategoryGroup& group) {
            return group.name == name && !std::all_of(
                                             group.members.begin(), group.members.end(),
                                             [](const Category* member) { return member->allowed.Get(); });
        });
}

void CategoryGroups::SetAllowed(const std::string& name, bool allowed)
{
    for (const CategoryGroup& group : m_groups)
        if (group.name == name)
            for (Category* member : group.members)
                member->allowed.Set(allowed);
}

} // namespace Settings
