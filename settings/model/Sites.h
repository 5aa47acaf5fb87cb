#pragma once

#include "settings/model/Group.h"
#include "settings/model/Site.h"

namespace Settings
{

/// A list of allowed and blocked websites. The tree holds two, at two key bases.
class Sites : public Group
{
public:
    Sites(Model* parent, const std::wstring& keyBase);

    /// Adds the site, or replaces the one with the same address.
    void Add(const Site& site);

    /// Removes the site with this address, given with or without scheme and trailing slashes.
    void Remove(const std::string& address);

    Property<bool> enabled;
    Property<bool> allowUnknown;
    PropertySet<Site> list;
};

} // namespace Settings
