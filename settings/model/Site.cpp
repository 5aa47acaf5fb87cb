#include "settings/model/Site.h"

#include "settings/model/Invariant.h"

#include <utility>

namespace Settings
{

namespace
{

constexpr FunctionLog kSiteLog(L"Settings::Site::Site");

void CheckInvariants(const Site& site)
{
    CheckInvariant(kSiteLog, !site.Url.empty(), L"!Url.empty()");
}

} // namespace

Site::Site(std::string url, bool isAllowed, std::string displayName)
    : Url(std::move(url)), allowed(isAllowed), label(std::move(displayName))
{
    CheckInvariants(*this);
}

Site::Site(const StrataSettings::StrataObject& record)
{
    record.Get(L"url", Url);
    record.Get(L"label", label);
    record.Get(L"allowed", allowed);
    CheckInvariants(*this);
}

Site Site::Key(std::string url)
{
    Site key;
    key.Url = std::move(url);
    return key;
}

bool Site::WriteTo(StrataSettings::StrataObject& record) const
{
    return record.Set(L"url", Url) && record.Set(L"label", label) && record.Set(L"allowed", allowed);
}

} // namespace Settings
