#pragma once

#include "settings/model/Group.h"

namespace Settings
{

/// Parental controls that the platform account manages.
class DigiParenting : public Group
{
public:
    explicit DigiParenting(Model* parent) : Group(parent) {}

    Property<bool> activated{this, L"common.digiparenting.activated", false};
    Property<bool> initialized{this, L"common.digiparenting.initialized", false};
};

} // namespace Settings
