#include "handlers/SettingsControllers.h"

template class StrataSettings::ScopedSettings<VdnSettings>;
template class Controller<VdnSettings>;
template class SystemSettingsController<VdnSettings>;
template class UserSettingsController<VdnSettings>;
