#pragma once

#include "settings/model/Category.h"
#include "settings/model/CategoryGroups.h"
#include "settings/model/Group.h"

#include <string>
#include <utility>

namespace Settings
{

/// The web page filter: its switches, and which categories of websites are allowed. Callers name a category by its
/// legacy name ("alcohol and tobacco").
class Categories : public Group
{
public:
    explicit Categories(Model* parent) : Group(parent) {}

    /// Whether websites of this category are allowed; of a category that names a group, whether all of the group's are.
    /// An unknown name answers as the fallback category does.
    bool IsAllowed(const std::string& name) const;

    /// Allows or blocks a category, and where it names a group all of that group. An unknown name changes nothing.
    void SetCategory(const std::string& name, bool allowed);

    Property<bool> enabled{this, L"common.content.enabled", false};
    Property<bool> safeSearchEnabled{this, L"common.content.safesearch_enabled", false};
    CategoryArray categories = MakeCategories(std::make_index_sequence<kCategoryNames.size()>());
    CategoryGroups groups{categories};

private:
    template <std::size_t... Index>
    CategoryArray MakeCategories(std::index_sequence<Index...>)
    {
        return {{{this, kCategoryNames[Index]}...}};
    }
};

} // namespace Settings
