#pragma once

#include "settings/model/Addresses.h"
#include "settings/model/Group.h"

namespace Settings
{

/// The page for submitting a sample URL.
class SampleSubmitLink : public Group
{
public:
    explicit SampleSubmitLink(Model* parent) : Group(parent) {}

    Property<bool> activated{this, L"windows.browsing_protection.sample_submit_link.activated", true};
    Property<std::string> url{this, L"windows.browsing_protection.sample_submit_link.url", Addresses::kSampleSubmit};
};

} // namespace Settings
