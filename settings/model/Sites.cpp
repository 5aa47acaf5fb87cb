#include "settings/model/Sites.h"

#include "logging/FunctionLog.h"

#include <string_view>

namespace Settings
{

using StrataSettings::SetResult;

namespace
{

constexpr FunctionLog kAddLog(L"Settings::Sites::Add");
constexpr FunctionLog kRemoveLog(L"Settings::Sites::Remove");

std::string_view WithoutSchemeAndTrailingSlashes(std::string_view address)
{
    constexpr std::string_view kSeparator = "://";
    if (const auto scheme = address.find(kSeparator); scheme != std::string_view::npos)
        address.remove_prefix(scheme + kSeparator.size());
    return address.substr(0, address.find_last_not_of('/') + 1);
}

} // namespace

Sites::Sites(Model* parent, const std::wstring& keyBase)
    : Group(parent), enabled(this, keyBase + L".enabled", true), allowUnknown(this, keyBase + L".allow_unknown", false),
      list(this, keyBase + L".list")
{}

void Sites::Add(const Site& site)
{
    if (list.Insert(site) == SetResult::Stored)
        return;
    if (list.Erase(site) != SetResult::Stored)
        LOG(kAddLog, 3, L"%s: Failed to erase '%hs'", site.Url.c_str());
    else if (list.Insert(site) != SetResult::Stored)
        LOG(kAddLog, 3, L"%s: Failed to emplace '%hs'", site.Url.c_str());
}

void Sites::Remove(const std::string& address)
{
    const std::string url(WithoutSchemeAndTrailingSlashes(address));
    if (list.Erase(Site::Key(url)) == SetResult::Stored)
        return;
    LOG(kRemoveLog, 3, L"%s: Failed to erase '%hs', trying without schema stripping", url.c_str());
    if (list.Erase(Site::Key(address)) != SetResult::Stored)
        LOG(kRemoveLog, 3, L"%s: Failed to erase '%hs'", address.c_str());
}

} // namespace Settings
