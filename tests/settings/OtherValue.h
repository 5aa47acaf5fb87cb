#pragma once

#include "settings/binding/PropertyBase.h"

/// Gives a property a value that is neither the default nor what it holds. False when the property refused it.
bool ChangeToAnotherValue(StrataSettings::PropertyBase& property);

/// Whether two properties of one type hold equal values.
bool HoldSameValue(const StrataSettings::PropertyBase& left, const StrataSettings::PropertyBase& right);
