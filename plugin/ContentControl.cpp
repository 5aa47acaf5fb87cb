#include "plugin/ContentControl.h"

#include "handlers/BrowserExtensionsHandler.h"
#include "handlers/BrowsingProtectionHandler.h"
#include "handlers/DeviceLockHandler.h"
#include "handlers/FamilyRulesHandler.h"
#include "handlers/MainGuiHandler.h"
#include "handlers/SafeBankingHandler.h"
#include "handlers/StatisticsHandler.h"
#include "handlers/TimeLimitHandler.h"
#include "handlers/WebFilteringHandler.h"
#include "handlers/WebsiteListHandler.h"
#include "logging/FunctionLog.h"

namespace
{
constexpr int kDefaultLogLevel = 4;
}

ContentControl::ContentControl()
{
    NlOrbLogging::Initialize(L"NLCC", L"Veridan", kDefaultLogLevel, 0);
    const EntryLog log(L"ContentControl::ContentControl");
}

ContentControl::~ContentControl()
{
    const EntryLog log(L"ContentControl::~ContentControl");
}

bool ContentControl::Initialize(IPlugInManager* manager)
{
    const EntryLog log(L"ContentControl::Initialize");
    if (!manager || !m_modules.LoadDll())
        return false;

    CreateControllers();
    LOG(log, 5, L"%s: VDN settings initialized");
    CreateHandlers();
    LOG(log, 5, L"%s: GUI handlers created");
    if (!InitializeHandlers(manager))
        return false;
    ConnectHandlers();

    manager->InvokeWhenEventLoopReady(nullptr, this, "1OnEventLoopReady()");
    LOG(log, 5, L"%s: GUI handlers initialized");
    return true;
}

void ContentControl::CreateControllers()
{
    m_systemSettings = std::make_shared<SystemSettings>(nullptr, kSettingsClientId);
    m_systemSettings->Load();
    m_systemSettings->Serve<Settings::BrowsingProtection, Settings::BankingProtection, Settings::Internal,
                            Settings::Fragfinn, Settings::ValueComms>();

    m_userSettings = UserSettings::Create(m_systemSettings, false);
    m_userSettings
        ->Serve<Settings::Internal, Settings::BankingProtection, Settings::Time, Settings::TimeLimits,
                Settings::Categories, Settings::Fragfinn, Settings::WebFiltering, Settings::SearchResultFilter>();
}

void ContentControl::CreateHandlers()
{
    m_mainGui = std::make_shared<MainGuiHandler>(m_systemSettings, m_userSettings);
    m_safeBanking = std::make_shared<SafeBankingHandler>(m_systemSettings, m_userSettings);
    m_websiteList = std::make_shared<WebsiteListHandler>(m_systemSettings, m_userSettings, m_mainGui);
    m_timeLimit = std::make_shared<TimeLimitHandler>(m_userSettings, m_mainGui);
    m_browsingProtection = std::make_shared<BrowsingProtectionHandler>(m_systemSettings);
    m_webFiltering = std::make_shared<WebFilteringHandler>(m_systemSettings, m_userSettings);
    m_familyRules = std::make_shared<FamilyRulesHandler>(m_systemSettings, m_userSettings);
    m_browserExtensions = std::make_shared<BrowserExtensionsHandler>(m_userSettings, m_mainGui);
    m_deviceLock = std::make_shared<DeviceLockHandler>(m_systemSettings, m_userSettings);
    m_statistics = std::make_shared<StatisticsHandler>(m_userSettings);
}

bool ContentControl::InitializeHandlers(IPlugInManager* manager)
{
    return m_browsingProtection->Initialize(manager)         //
           && m_webFiltering->Initialize(manager, m_mainGui) //
           && m_timeLimit->Initialize(manager)               //
           && m_websiteList->Initialize(manager)             //
           && m_safeBanking->Initialize(manager)             //
           && m_familyRules->Initialize(manager, m_mainGui)  //
           && m_mainGui->Initialize(manager)                 //
           && m_browserExtensions->Initialize(manager)       //
           && m_deviceLock->Initialize(manager)              //
           && m_statistics->Initialize(manager);
}

void ContentControl::ConnectHandlers()
{
    const auto reload = [websiteList = std::weak_ptr<WebsiteListHandler>(m_websiteList)] {
        if (const auto handler = websiteList.lock())
            handler->RefreshAllowedWebsitesList();
    };
    connect(m_mainGui.get(), &MainGuiHandler::ReloadAllowedWebsitesList, m_mainGui.get(), reload, Qt::DirectConnection);
}

void ContentControl::OnEventLoopReady()
{
    if (m_deviceLock)
        m_deviceLock->OnEventLoopReady();
}
