#pragma once

#include "settings/model/Category.h"

#include <array>
#include <string>
#include <vector>

namespace Settings
{

/// Two sets of categories that are allowed or blocked as one, "disturbing" and "shopping". A group has the name of one
/// of its members. Refers to the categories, which must outlive it.
class CategoryGroups
{
public:
    explicit CategoryGroups(CategoryArray& categories);

    /// Whether this is the name of a group with a member that is not allowed.
    bool IsBlocked(const std::string& name) const;

    /// Allows or blocks every member of the group of this name; nothing for any other name.
    void SetAllowed(const std::string& name, bool allowed);

private:
    struct CategoryGroup
    {
        std::string name;
        std::vector<Category*> members; // in the order of the table
    };

    const std::array<CategoryGroup, 2> m_groups;
};

} // namespace Settings
