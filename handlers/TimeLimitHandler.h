#pragma once

#include "handlers/SettingsControllers.h"
#include "handlers/UiVariables.h"

#include <QObject>

#include <string>

class MainGuiHandler;

/// Serves the time-limit page: the week's allowed hours, one character each, and the daily limit. UI thread only.
class TimeLimitHandler : public QObject
{
    Q_OBJECT

public:
    TimeLimitHandler(const std::shared_ptr<UserSettings>& userSettings, const std::shared_ptr<MainGuiHandler>& mainGui);
    ~TimeLimitHandler() override;

    /// False without a data peer.
    bool Initialize(IPlugInManager* manager);

    void Load();
    void Save();

public Q_SLOTS:
    void OnNotify(VariableIdentifier identifier);

private:
    static const NotifyRule<TimeLimitHandler> kNotifyRules[];

    /// Leaves what the page, loaded from `shown`, only shows for want of settings that could not be read.
    static void SaveDailyTimeLimits(Settings::Time& time, int hours, const std::string& timeSlots,
                                    const Settings::Time* shown);

    const std::weak_ptr<UserSettings> m_userSettings;
    const std::weak_ptr<MainGuiHandler> m_mainGui;
    UiVariables m_variables{*this};
};
