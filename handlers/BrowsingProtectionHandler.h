#pragma once

#include "handlers/SettingsControllers.h"
#include "handlers/UiVariables.h"

#include <QObject>

/// Shows the options of browsing protection and opens the page of the browser extension. UI thread only.
class BrowsingProtectionHandler : public QObject
{
    Q_OBJECT

public:
    explicit BrowsingProtectionHandler(const std::shared_ptr<SystemSettings>& systemSettings);
    ~BrowsingProtectionHandler() override;

    /// False without a data peer.
    bool Initialize(IPlugInManager* manager);

    void Load();
    void OpenChromeWebStore();

public Q_SLOTS:
    void OnNotify(VariableIdentifier identifier);

private:
    static const NotifyRule<BrowsingProtectionHandler> kNotifyRules[];

    const std::weak_ptr<SystemSettings> m_systemSettings;
    UiVariables m_variables{*this};
};
