#include "handlers/MainGuiHandler.h"

#include "handlers/MainGuiVariables.h"
#include "handlers/Metrics.h"
#include "logging/FunctionLog.h"

using namespace MainGuiVariables;
using StrataSettings::SetResult;

namespace
{

constexpr FunctionLog kInitializeLog(L"MainGuiHandler::Initialize");
constexpr FunctionLog kNotifyLog(L"MainGuiHandler::OnNotify");

constexpr const char* kOnRequestShow = "1OnNotifyRequestShow(VariableIdentifier)";

} // namespace

const NotifyRule MainGuiHandler::kNotifyRules[] = {
    {kLoadData, &MainGuiHandler::OnLoadData},
    {kMainGuiVisible, &MainGuiHandler::OnVisibilityChanged},
    {kWebFilterState, &MainGuiHandler::OnSwitchMoved},
    {kTimeLimitState, &MainGuiHandler::OnSwitchMoved},
    {kSafeSearchState, &MainGuiHandler::OnSwitchMoved},
    {kShowWebsiteList, &MainGuiHandler::OnWebsiteListShown},
    {kCloseWebsiteList, &MainGuiHandler::OnWebsiteListClosed},
    {kCloseAddWebsites, &MainGuiHandler::OnAddWebsitesClosed},
    {kSaveAllowedUrl, &MainGuiHandler::OnUrlToSave},
    {kSaveMyLinksUrl, &MainGuiHandler::OnUrlToSave},
    {kShowSettings, &MainGuiHandler::OnSettingsShown},
    {kShowBrowsingProtection, &MainGuiHandler::OnSettingsShown},
    {kShowTimeLimit, &MainGuiHandler::OnSettingsShown},
    {kShowWebFilter, &MainGuiHandler::OnSettingsShown},
    {kShowBankingProtection, &MainGuiHandler::OnSettingsShown},
    {kShowSafeSearch, &MainGuiHandler::OnSettingsShown},
    {kShowBrowserExtensions, &MainGuiHandler::OnSettingsShown},
    {kShowSecuritySettings, &MainGuiHandler::OnSettingsShown},
    {kSettingsClosed, &MainGuiHandler::OnSettingsClosed},
    {kSecuritySettingsClosed, &MainGuiHandler::OnSettingsClosed},
    {kSettingsSave, &MainGuiHandler::OnSettingsSave},
    NotifyRule(kLaunchSupportTool),
};

/// A request to show an elevated page.
struct MainGuiHandler::ShowRule
{
    const VariableIdentifier& request;
    std::uint32_t page;
    bool ownHandle; // asks anew while pages of another kind are open
    const VariableIdentifier& show;
};

const MainGuiHandler::ShowRule MainGuiHandler::kShowRules[] = {
    {kRequestShowWebsiteList, ElevatedPages::WebsiteListPage, true, kShowWebsiteList},
    {kRequestShowAddWebsites, ElevatedPages::AddWebsitesDialog, true, kShowAddWebsites},
    {kRequestShowSettings, ElevatedPages::SettingsUI, false, kShowSettings},
    {kRequestShowWebFilter, ElevatedPages::SettingsUI, false, kShowWebFilter},
    {kRequestShowTimeLimit, ElevatedPages::SettingsUI, false, kShowTimeLimit},
    {kRequestShowTimeLimitWizard, ElevatedPages::SettingsUI, false, kShowTimeLimit},
    {kRequestShowSafeSearch, ElevatedPages::SettingsUI, false, kShowSafeSearch},
};

MainGuiHandler::MainGuiHandler(const std::shared_ptr<SystemSettings>& systemSettings,
                               const std::shared_ptr<UserSettings>& userSettings)
    : Handler(L"MainGuiHandler::OnNotify"), m_systemSettings(systemSettings), m_userSettings(userSettings)
{
    const EntryLog log(L"MainGuiHandler::MainGuiHandler");
    if (userSettings)
        m_elevated.SetUser(userSettings->CurrentSid());
}

MainGuiHandler::~MainGuiHandler()
{
    const EntryLog log(L"MainGuiHandler::~MainGuiHandler");
    UninitialiseAdminHandle();
}

bool MainGuiHandler::Initialize(IPlugInManager* manager)
{
    const EntryLog log(kInitializeLog.Name());
    LOG(log, 5, L"%s: MainGuiHandler logon");
    if (!m_variables.Obtain(log, manager))
        return false;
    DeclareVariables();
    LOG(log, 5, L"%s: MainGuiHandler variables wired");

    LoadStatus();
    LoadUserData();
    LoadSystemWideData();
    FollowSettings();
    LOG(log, 5, L"%s: MainGuiHandler initialized");
    return true;
}

void MainGuiHandler::DeclareVariables()
{
    m_variables.Register({kBrowsingProtectionStatus, kBrowsingProtectionState, kBrowsingProtectionReadOnly,
                          kWebFilterStatus, kTimeLimitStatus, kSafeSearchStatus, kBankingProtectionStatus,
                          kBankingProtectionReadOnly, kBankingProtectionState, kStatusLevel, kMainStatus, kSubStatus,
                          kBrowserExtensionDisabled, kDefaultBrowserType, kMainGuiVisible, kRequestShowSettings,
                          kShowSettings, kSave});

    Follow(kNotifyRules);
    for (const ShowRule& rule : kShowRules)
        m_variables.Subscribe({rule.request}, kOnRequestShow);
    m_variables.Subscribe({kShowMainWindow}, kOnRequestShow);
    m_variables.Subscribe({kSave}, "1OnSave()");
    m_variables.Subscribe({kLocalizationUpdated}, "1OnLocalizationUpdated(VariableIdentifier)");
}

void MainGuiHandler::FollowSettings()
{
    const auto user = m_userSettings.lock();
    if (!user)
        LOG(kInitializeLog, 5, L"%s: user settings controller missing. UI is blind to browser extension state");
    else
    {
        const VdnSettings& settings = user->Settings();
        Follow(*user, settings.internal.defaultBrowserExtensionDisabled,
               [this](const std::wstring& key) { BrowsingProtectionSTRATAChanged(key); });
        RepublishOnChange(*user, settings.categories.enabled, settings.time.enabled,
                          settings.searchResultFilter.enabled, settings.categories.safeSearchEnabled,
                          settings.internal.defaultBrowserType);
    }

    if (const auto system = m_systemSettings.lock())
    {
        const VdnSettings& settings = system->Settings();
        RepublishOnChange(*system, settings.browsingProtection.enabled, settings.bankingProtection.enabled,
                          settings.digiParenting.activated);
    }
}

template <class Controller, class... Properties>
void MainGuiHandler::RepublishOnChange(Controller& controller, const Properties&... properties)
{
    const auto republish = [this](const std::wstring&) {
        LoadStatus();
        LoadSystemWideData();
        LoadUserData();
    };
    (Follow(controller, properties, republish), ...);
}

void MainGuiHandler::LoadStatus()
{
    const EntryLog log(L"MainGuiHandler::LoadStatus");
    const auto system = m_systemSettings.lock();
    if (!system || !m_variables)
    {
        LOG(log, 1, L"%s: systemSettings=%d, m_dataPeer=%d", system ? 1 : 0, m_variables ? 1 : 0);
        return;
    }

    m_page.ShowStatus(system->Settings(), m_userSettings.lock().get());
}

void MainGuiHandler::LoadSystemWideData()
{
    const EntryLog log(L"MainGuiHandler::LoadSystemWideData");
    if (const auto system = m_systemSettings.lock(); system && m_variables)
        m_page.ShowSystemWideData(system->Settings());
}

void MainGuiHandler::LoadUserData()
{
    const EntryLog log(L"MainGuiHandler::LoadUserData");
    const auto user = m_userSettings.lock();
    const auto system = m_systemSettings.lock();
    if (user && system && m_variables)
        m_page.ShowUserData(system->Settings(), user->Settings());
}

void MainGuiHandler::OnLoadData()
{
    if (LoadMissing())
    {
        m_variables.Fire(kLoadData); // once more: other handlers may have shown the state before
        return;
    }
    LoadSystemWideData();
    LoadUserData();
}

void MainGuiHandler::OnVisibilityChanged()
{
    const auto user = m_userSettings.lock();
    if (!user)
        return;
    user->WritableSettings().internal.mainGuiOpen.Set(m_variables.Get(kMainGuiVisible).toBool());
    user->RequestSave(user->CurrentSid());
}

void MainGuiHandler::OnSwitchMoved(const VariableIdentifier& id)
{
    SaveFeatureSwitch(id);
    LoadStatus();
}

void MainGuiHandler::OnWebsiteListShown()
{
    m_elevated.Add(ElevatedPages::WebsiteListPage);
}

void MainGuiHandler::OnWebsiteListClosed()
{
    SetUnusedUI(ElevatedPages::WebsiteListPage);
}

void MainGuiHandler::OnAddWebsitesClosed()
{
    SetUnusedUI(ElevatedPages::AddWebsitesDialog);
}

void MainGuiHandler::OnSettingsShown()
{
    RecordMetricsEvent(kNotifyLog, "settings_gui_opened");
    m_variables.Fire(kLoadData);
}

/// A page that opens shows what could not be read before, if it can be read by now.
bool MainGuiHandler::LoadMissing()
{
    const auto system = m_systemSettings.lock();
    const auto user = m_userSettings.lock();
    const bool systemBrought = system && system->LoadMissing();
    return (user && user->LoadMissing()) || systemBrought;
}

void MainGuiHandler::OnSettingsClosed()
{
    SetUnusedUI(ElevatedPages::SettingsUI);
}

void MainGuiHandler::OnSettingsSave()
{
    LOG(kNotifyLog, 5, L"%s: Trigger Settings save event");
    m_variables.Set(kSaveResult, 0);
    m_variables.Set(kSaveResultReceiver, UiString("VDNSettingsMultiPageHost"));
    m_variables.Fire(kSaveResultNotifier);
}

void MainGuiHandler::OnNotifyRequestShow(VariableIdentifier identifier)
{
    const FunctionLog log(L"MainGuiHandler::OnNotifyRequestShow");
    LOG(log, 5, L"%s: %ls", LogString(identifier).c_str());

    LoadMissing();
    if (!m_elevated.IsAnyOpen() && !m_variables.Get(kMainGuiVisible).toBool())
    {
        LoadUserData();
        LoadStatus();
    }

    if (identifier == kShowMainWindow)
    {
        m_variables.Set(kMainGuiVisible, true);
        LoadSystemWideData();
        LoadUserData();
        return;
    }

    for (const ShowRule& rule : kShowRules)
    {
        if (rule.request != identifier)
            continue;
        if (!ShowUAC(rule.ownHandle && m_elevated.IsAnyOpenBut(rule.page)))
            return;
        m_elevated.Add(rule.page);
        m_variables.Fire(rule.show);
        return;
    }
}

void MainGuiHandler::OnUrlToSave(const VariableIdentifier& id)
{
    if (id == kSaveAllowedUrl && !ShowUAC(true))
    {
        LOG(FunctionLog(L"MainGuiHandler::OnNotify"), 3, L"%s: Could not show UAC.");
        return;
    }
    if (SaveAllowedUrl(m_variables.Get(id).toString()))
        Q_EMIT ReloadAllowedWebsitesList();
    ReleaseUnusedAdminHandle();
}

void MainGuiHandler::SaveFeatureSwitch(const VariableIdentifier& id)
{
    const FunctionLog log(L"MainGuiHandler::SaveFeatureSwitch");
    LOG(log, 5, L"%s: %ls", LogString(id).c_str());

    const QString move = m_variables.Get(id).toString();
    if (move != QLatin1String("MoveOn") && move != QLatin1String("MoveOff"))
        return; // a settled value, which this handler wrote itself
    if (!m_elevated.Settings())
        return;

    VdnSettings& settings = m_elevated.Settings()->WritableSettings();
    const bool on = move == QLatin1String("MoveOn");
    const VariableIdentifier* status = nullptr;
    bool stored = true;
    const auto set = [&](StrataSettings::Property<bool>& property) {
        stored &= property.Set(on) != SetResult::Enforced;
    };
    if (id == kWebFilterState)
    {
        set(settings.categories.enabled);
        status = &kWebFilterStatus;
    }
    else if (id == kTimeLimitState)
    {
        set(settings.time.enabled);
        set(settings.time.quotas.enabled);
        status = &kTimeLimitStatus;
    }
    else if (id == kSafeSearchState)
    {
        set(settings.searchResultFilter.enabled);
        status = &kSafeSearchStatus;
    }
    else
        return;

    stored &= m_elevated.Settings()->Save();
    m_page.ShowSwitch(id, *status, on);
    if (!stored)
        LoadUserData();
}

bool MainGuiHandler::SaveAllowedUrl(const QString& url)
{
    const FunctionLog log(L"MainGuiHandler::SaveAllowedUrl");
    LOG(log, 5, L"%s: %ls", url.toStdWString().c_str());

    const std::string address = url.toStdString();
    if (address.empty())
    {
        LOG(log, 3, L"%s: Cannot save an empty URL");
        return false;
    }
    if (!Settings::Site::IsAddress(address))
    {
        LOG(log, 3, L"%s: Cannot save a URL that is no address");
        return false;
    }
    if (m_elevated.Settings())
    {
        m_elevated.Settings()->WritableSettings().internal.sites.Add(Settings::Site(address, true, std::string()));
        m_elevated.Settings()->Save();
    }
    return true;
}

void MainGuiHandler::OnLocalizationUpdated(VariableIdentifier)
{
    const EntryLog log(L"MainGuiHandler::OnLocalizationUpdated");
    LoadStatus();
}

void MainGuiHandler::OnBrowserRepositoryChanged()
{
    const EntryLog log(L"MainGuiHandler::OnBrowserRepositoryChanged");
    LoadUserData();
}

void MainGuiHandler::OnUserInfoChanged()
{
    const EntryLog log(L"MainGuiHandler::OnUserInfoChanged");
    if (!m_variables)
        return;
    LoadUserData();
    LoadStatus();
}

void MainGuiHandler::OnSave()
{
    const EntryLog log(L"MainGuiHandler::OnSave");
    Q_EMIT Save(m_elevated.Settings());
}

void MainGuiHandler::BrowsingProtectionSTRATAChanged(const std::wstring&)
{
    const EntryLog log(L"MainGuiHandler::BrowsingProtectionSTRATAChanged");
    LoadSystemWideData();
    LoadStatus();
    LoadUserData();
    if (m_variables)
        m_variables.Fire(kLoadData);
}
