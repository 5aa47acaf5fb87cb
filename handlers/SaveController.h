#pragma once

#include "handlers/SettingsControllers.h"
#include "logging/FunctionLog.h"

#include <memory>

class MainGuiHandler;

/// The elevated settings that a settings page saves through. Null, after a log line of the caller's, when the main
/// page's handler is gone or holds none; `initialized` is that word as the caller's log text spells it.
std::shared_ptr<ElevatedSettings> SaveController(const FunctionLog& log, const std::weak_ptr<MainGuiHandler>& mainGui,
                                                 const wchar_t* initialized);
