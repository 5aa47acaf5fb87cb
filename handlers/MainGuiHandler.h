#pragma once

#include "handlers/ElevatedPages.h"
#include "handlers/Handler.h"
#include "handlers/MainPage.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <string>

/// Owns the main page's status and switches and the settings pages' life cycle. Turns switch moves into settings,
/// saves a URL that the user allows from a block page, and holds the elevated settings that every settings page saves
/// through. Those exist exactly as long as a page that needs them is open. UI thread only.
class MainGuiHandler : public Handler
{
    Q_OBJECT

public:
    /// Either controller may be missing or go at any time; what needs it is left out then.
    MainGuiHandler(const std::shared_ptr<SystemSettings>& systemSettings,
                   const std::shared_ptr<UserSettings>& userSettings);
    ~MainGuiHandler() override;

    /// Wires the variables and publishes them. Called once. False without a data peer.
    bool Initialize(IPlugInManager* manager);

    /// Publish settings to the page.
    void LoadStatus();
    void LoadSystemWideData();
    void LoadUserData();

    /// Carries out a switch move ("MoveOn", "MoveOff") that the page wrote into the variable.
    void SaveFeatureSwitch(const VariableIdentifier& id);

    /// Allows a site from now on. False for a URL that is empty or that the store cannot hold (Site::IsAddress()).
    bool SaveAllowedUrl(const QString& url);

    /// The elevated settings and their life, as ElevatedPages says.
    virtual std::shared_ptr<ElevatedSettings> Elevated() { return m_elevated.Settings(); }
    virtual bool ShowUAC(bool reopen) { return m_elevated.ShowUAC(reopen); }
    void SetUnusedUI(std::uint32_t bits) { m_elevated.Remove(bits); }
    void UninitialiseAdminHandle() { m_elevated.Release(); }
    void ReleaseUnusedAdminHandle() { m_elevated.ReleaseUnused(); }

    /// Told by the user's settings that the state of the browser extension changed.
    void BrowsingProtectionSTRATAChanged(const std::wstring& key);

Q_SIGNALS:
    void ReloadAllowedWebsitesList();
    void SelectedUserChanged(const QString& userId); ///< For a page that shows another user; there is none yet.
    void Save(const std::shared_ptr<ElevatedSettings>& settings);

public Q_SLOTS:
    void OnNotifyRequestShow(VariableIdentifier identifier);
    void OnUserInfoChanged();
    void OnLocalizationUpdated(VariableIdentifier identifier);
    void OnBrowserRepositoryChanged();
    void OnSave();

private:
    struct ShowRule;
    static const NotifyRule kNotifyRules[];
    static const ShowRule kShowRules[];

    void DeclareVariables();
    void FollowSettings();
    template <class Controller, class... Properties>
    void RepublishOnChange(Controller& controller, const Properties&... properties);

    void OnLoadData();
    void OnVisibilityChanged();
    void OnSwitchMoved(const VariableIdentifier& id);
    void OnWebsiteListShown();
    void OnWebsiteListClosed();
    void OnAddWebsitesClosed();
    void OnUrlToSave(const VariableIdentifier& id);
    void OnSettingsShown();
    void OnSettingsClosed();
    bool LoadMissing();
    void OnSettingsSave();

    const std::weak_ptr<SystemSettings> m_systemSettings;
    const std::weak_ptr<UserSettings> m_userSettings;
    MainPage m_page{m_variables};
    ElevatedPages m_elevated;
};
