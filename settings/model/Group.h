#pragma once

#include "settings/binding/Model.h"
#include "settings/binding/Property.h"
#include "settings/binding/PropertySet.h"

namespace Settings
{

using StrataSettings::Minutes;
using StrataSettings::Model;
using StrataSettings::Property;
using StrataSettings::PropertySet;
using StrataSettings::Seconds;
using StrataSettings::TimePoint;

/// A group of settings inside the tree. Its members are its keys: they register in the order of their declaration.
using Group = StrataSettings::Child<Model>;

} // namespace Settings
