#pragma once

#include "settings/binding/UserSettingsController.h"
#include "settings/model/VdnSettings.h"

/// The controllers that the handlers share, over the feature's settings tree. They are compiled once, in this folder.
using SystemSettings = SystemSettingsController<VdnSettings>;
using UserSettings = UserSettingsController<VdnSettings>;
using ElevatedSettings = Controller<VdnSettings>;

extern template class StrataSettings::ScopedSettings<VdnSettings>;
extern template class Controller<VdnSettings>;
extern template class SystemSettingsController<VdnSettings>;
extern template class UserSettingsController<VdnSettings>;
