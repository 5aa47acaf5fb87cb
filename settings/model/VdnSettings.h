#pragma once

#include "settings/binding/TypeName.h"
#include "settings/model/AntiVirus.h"
#include "settings/model/BankingProtection.h"
#include "settings/model/BrowsingProtection.h"
#include "settings/model/Categories.h"
#include "settings/model/DigiParenting.h"
#include "settings/model/Fragfinn.h"
#include "settings/model/Internal.h"
#include "settings/model/IpBasedBlocking.h"
#include "settings/model/SampleSubmitLink.h"
#include "settings/model/SearchResultFilter.h"
#include "settings/model/Sites.h"
#include "settings/model/Time.h"
#include "settings/model/TimeLimits.h"
#include "settings/model/ValueComms.h"
#include "settings/model/WebFiltering.h"

/// Every setting of the feature, the same tree for the machine's scope and for each user's. It is built with the
/// defaults; a controller loads it.
class VdnSettings : public StrataSettings::Model
{
public:
    VdnSettings() = default;
    VdnSettings(const VdnSettings& other) : VdnSettings() { CopyFrom(other); }

    Settings::BrowsingProtection browsingProtection{this};
    Settings::BankingProtection bankingProtection{this};
    Settings::SampleSubmitLink sampleSubmitLink{this};
    Settings::Fragfinn fragfinn{this};
    Settings::WebFiltering webFiltering{this};
    Settings::IpBasedBlocking ipBasedBlocking{this};
    Settings::TimeLimits timeLimits{this};
    Settings::SearchResultFilter searchResultFilter{this};
    Settings::Categories categories{this};
    Settings::Sites sites{this, L"common.sites"};
    Settings::Time time{this};
    Settings::DigiParenting digiParenting{this};
    Settings::ValueComms valueComms{this};
    Settings::AntiVirus antiVirus{this};
    Settings::Internal internal{this};
};

template <>
inline constexpr const wchar_t* StrataSettings::kTypeName<VdnSettings> = L"VdnSettings";
