#pragma once

#include "handlers/Handler.h"

#include <string>

class MainGuiHandler;

/// Serves the time-limit page: the week's allowed hours, one character each, and the daily limit. UI thread only.
class TimeLimitHandler : public Handler
{
    Q_OBJECT

public:
    TimeLimitHandler(const std::shared_ptr<UserSettings>& userSettings, const std::shared_ptr<MainGuiHandler>& mainGui);
    ~TimeLimitHandler() override;

    /// False without a data peer.
    bool Initialize(IPlugInManager* manager);

    void Load();
    void Save();

private:
    static const NotifyRule kNotifyRules[];

    struct Page
    {
        int hours;
        std::string timeSlots;
    };

    /// Takes what was chosen, which is what differs from what the page was given. The page shows whole hours and one
    /// limit for all days, so that taking the rest, too, would coarsen it.
    void SaveDailyTimeLimits(Settings::Time& time, const Page& page);

    const std::weak_ptr<UserSettings> m_userSettings;
    const std::weak_ptr<MainGuiHandler> m_mainGui;
    Page m_given{-1, {}}; // what the page shows without anybody's choice
};
