#include "settings/model/PrivacyProtectedSite.h"

#include "settings/model/Invariant.h"

#include <utility>

namespace Settings
{

namespace
{

constexpr FunctionLog kPrivacySiteLog(L"Settings::PrivacyProtectedSite::PrivacyProtectedSite");

void CheckInvariants(const PrivacyProtectedSite& site)
{
    CheckInvariant(kPrivacySiteLog, !site.Address.empty(), L"!Address.empty()");
}

} // namespace

PrivacyProtectedSite::PrivacyProtectedSite(std::string address, bool isEnabled)
    : Address(std::move(address)), enabled(isEnabled)
{
    CheckInvariants(*this);
}

PrivacyProtectedSite::PrivacyProtectedSite(const StrataSettings::StrataObject& record)
{
    record.Get(L"address", Address);
    record.Get(L"enabled", enabled);
    CheckInvariants(*this);
}

bool PrivacyProtectedSite::WriteTo(StrataSettings::StrataObject& record) const
{
    return record.Set(L"address", Address) && record.Set(L"enabled", enabled);
}

} // namespace Settings
