#pragma once

#include "settings/binding/PropertyBase.h"

#include <string>

/// Gives a property a value that is neither the default nor what it holds. False when the property refused it.
bool ChangeToAnotherValue(StrataSettings::PropertyBase& property);

/// Whether two properties of one type hold equal values.
bool HoldSameValue(const StrataSettings::PropertyBase& left, const StrataSettings::PropertyBase& right);

/// The property's value type, as log names spell it.
std::wstring TypeNameOf(const StrataSettings::PropertyBase& property);
