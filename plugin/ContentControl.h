#pragma once

#include "delay_load/ModuleHandler.h"
#include "handlers/SettingsControllers.h"
#include "tarn/IPlugIn.h"

#include <QObject>

#include <memory>

class BrowserExtensionsHandler;
class BrowsingProtectionHandler;
class DeviceLockHandler;
class FamilyRulesHandler;
class MainGuiHandler;
class SafeBankingHandler;
class StatisticsHandler;
class TimeLimitHandler;
class WebFilteringHandler;
class WebsiteListHandler;

/// The plug-in: loads the suite's libraries, owns the settings controllers and the feature handlers, and brings them up
/// in their order. UI thread only.
class ContentControl : public QObject, public IPlugIn
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.norlane.Veridan.ContentControl")
    Q_INTERFACES(IPlugIn)

public:
    ContentControl();
    ~ContentControl() override;

    bool Initialize(IPlugInManager* manager) override;

public Q_SLOTS:
    /// The host's event loop runs.
    virtual void OnEventLoopReady();

private:
    void CreateControllers();
    void CreateHandlers();
    bool InitializeHandlers(IPlugInManager* manager);
    void ConnectHandlers();

    // Released from last to first: the controllers before the handlers, the libraries last.
    ModuleHandler m_modules;
    std::shared_ptr<MainGuiHandler> m_mainGui;
    std::shared_ptr<BrowsingProtectionHandler> m_browsingProtection;
    std::shared_ptr<WebFilteringHandler> m_webFiltering;
    std::shared_ptr<TimeLimitHandler> m_timeLimit;
    std::shared_ptr<WebsiteListHandler> m_websiteList;
    std::shared_ptr<SafeBankingHandler> m_safeBanking;
    std::shared_ptr<FamilyRulesHandler> m_familyRules;
    std::shared_ptr<BrowserExtensionsHandler> m_browserExtensions;
    std::shared_ptr<DeviceLockHandler> m_deviceLock;
    std::shared_ptr<StatisticsHandler> m_statistics;
    std::shared_ptr<SystemSettings> m_systemSettings;
    std::shared_ptr<UserSettings> m_userSettings;
};
