#pragma once

#include "handlers/Handler.h"

class MainGuiHandler;

/// Shows whether the browser extensions are forced, and has them installed again. UI thread only.
class BrowserExtensionsHandler : public Handler
{
    Q_OBJECT

public:
    BrowserExtensionsHandler(const std::shared_ptr<UserSettings>& userSettings,
                             const std::shared_ptr<MainGuiHandler>& mainGui);
    ~BrowserExtensionsHandler() override;

    /// False without a data peer.
    bool Initialize(IPlugInManager* manager);

    void Load();

    /// Asks the user to agree, then raises the counter whose change has the service install the extensions again.
    void ReinstallExtensions();

private:
    static const NotifyRule kNotifyRules[];

    const std::weak_ptr<UserSettings> m_userSettings;
    const std::weak_ptr<MainGuiHandler> m_mainGui;
};
