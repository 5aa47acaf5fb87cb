#pragma once

#include "handlers/Handler.h"

/// Shows the options of browsing protection and opens the page of the browser extension. UI thread only.
class BrowsingProtectionHandler : public Handler
{
    Q_OBJECT

public:
    explicit BrowsingProtectionHandler(const std::shared_ptr<SystemSettings>& systemSettings);
    ~BrowsingProtectionHandler() override;

    /// False without a data peer.
    bool Initialize(IPlugInManager* manager);

    void Load();
    void OpenChromeWebStore();

private:
    static const NotifyRule kNotifyRules[];

    const std::weak_ptr<SystemSettings> m_systemSettings;
};
