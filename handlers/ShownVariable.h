#pragma once

#include "settings/model/VdnSettings.h"

#include <QVariant>

/// A UI variable that shows something of the settings.
struct ShownVariable
{
    const char* id;
    QVariant (*value)(const VdnSettings& settings);
};

/// The value of the property at the end of a path of members: Value<&VdnSettings::fragfinn, &Settings::Fragfinn::url>.
template <auto... Path>
QVariant Value(const VdnSettings& settings)
{
    return QVariant((settings.*....*Path).Get());
}

/// Whether policy locks it.
template <auto... Path>
QVariant ReadOnly(const VdnSettings& settings)
{
    return QVariant((settings.*....*Path).IsEnforced());
}
