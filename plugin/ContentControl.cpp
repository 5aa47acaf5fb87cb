#include "plugin/ContentControl.h"

#include "handlers/MainGuiHandler.h"
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
}

bool ContentControl::InitializeHandlers(IPlugInManager* manager)
{
    return m_mainGui->Initialize(manager);
}

void ContentControl::OnEventLoopReady() {}
