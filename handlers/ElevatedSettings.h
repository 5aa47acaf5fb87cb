#pragma once

#include "handlers/SettingsControllers.h"
#include "logging/FunctionLog.h"

#include <memory>

class MainGuiHandler;

/// The elevated settings that a settings page saves through. Null, after a log line of the caller's, when the main
/// page's handler is gone or holds none; `initialized` is that word as the caller's log text spells it.
std::shared_ptr<ElevatedSettings>
FindElevatedSettings(const FunctionLog& log, const std::weak_ptr<MainGuiHandler>& mainGui, const wchar_t* initialized);

/// Whether a page's value is somebody's choice: what it shows for want of a setting that could not be read is none.
template <class T>
bool IsChosen(const StrataSettings::Property<T>& shown, const T& value)
{
    return !shown.ReadFailed() || shown.Get() != value;
}
