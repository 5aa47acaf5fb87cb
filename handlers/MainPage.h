#pragma once

#include "handlers/SettingsControllers.h"
#include "handlers/UiVariables.h"

/// What the main page shows of the settings. UI thread only.
class MainPage
{
public:
    explicit MainPage(UiVariables& variables) : m_variables(variables) {}

    /// Without the user's settings (null) the sub status stays as it is.
    void ShowStatus(const VdnSettings& system, UserSettings* user);
    void ShowSystemWideData(const VdnSettings& system);
    void ShowUserData(const VdnSettings& system, const VdnSettings& user);

    /// A switch and the status that goes with it.
    void ShowSwitch(const VariableIdentifier& state, const VariableIdentifier& status, bool on);

private:
    UiVariables& m_variables;
};
