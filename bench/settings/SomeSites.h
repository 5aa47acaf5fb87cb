#pragma once

#include "settings/model/Site.h"

#include <cstdint>
#include <set>
#include <string>

/// The address of the site with this number; their order is that of the numbers.
inline std::string SiteAddress(std::int64_t number)
{
    return "site-" + std::to_string(10'000'000 + number) + ".example/path";
}

/// Sites with even numbers; the odd ones lie between them.
inline std::set<Settings::Site> SomeSites(std::int64_t count)
{
    std::set<Settings::Site> sites;
    for (std::int64_t i = 0; i < count; ++i)
        sites.emplace_hint(sites.end(), SiteAddress(2 * i), i % 2 == 0, "label");
    return sites;
}
