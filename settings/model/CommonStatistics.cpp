#include "settings/model/CommonStatistics.h"

namespace Settings
{

namespace
{
constexpr std::uint32_t kConstraints = 2;
}

void CommonStatistics::ApplyConstraints(OrbStrataHandle handle)
{
    ForEachProperty([handle](StrataSettings::PropertyBase& property) {
        if (property.IsEnforced() || property.State() == StrataSettings::ModificationState::Changed)
            return;
        if (OrbStrata_SetConstraints(handle, property.GetKey().c_str(), kConstraints) == ORB_STRATA_SUCCESS)
            property.MarkChanged();
    });
}

} // namespace Settings
