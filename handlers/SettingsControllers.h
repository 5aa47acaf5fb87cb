#pragma once

#include "settings/binding/UserSettingsController.h"
#include "settings/model/VdnSettings.h"

/// The controllers that the handlers share, over the feature's settings tree.
using SystemSettings = SystemSettingsController<VdnSettings>;
using UserSettings = UserSettingsController<VdnSettings>;
using ElevatedSettings = Controller<VdnSettings>;
