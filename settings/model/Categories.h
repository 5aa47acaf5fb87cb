#pragma once

#include "settings/model/Category.h"
#include "settings/model/Group.h"

#include <utility>

namespace Settings
{

/// The web page filter: its switches and what each category of websites is allowed.
class Categories : public Group
{
public:
    explicit Categories(Model* parent) : Group(parent) {}

    using Array = std::array<Category, kCategoryNames.size()>;

    Property<bool> enabled{this, L"common.content.enabled", false};
    Property<bool> safeSearchEnabled{this, L"common.content.safesearch_enabled", false};
    Array categories = MakeCategories(std::make_index_sequence<kCategoryNames.size()>());

private:
    template <std::size_t... Index>
    Array MakeCategories(std::index_sequence<Index...>)
    {
        return {{{this, kCategoryNames[Index]}...}};
    }
};

} // namespace Settings
