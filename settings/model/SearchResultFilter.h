#pragma once

#include "settings/model/Group.h"

namespace Settings
{

/// Filtering of search results.
class SearchResultFilter : public Group
{
public:
    explicit SearchResultFilter(Model* parent) : Group(parent) {}

    Property<bool> activated{this, L"windows.browsing_protection.search_result_filter.activated", true};
    Property<bool> enabled{this, L"windows.browsing_protection.search_result_filter.enabled", false};
};

} // namespace Settings
