#pragma once

#include "handlers/Handler.h"

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

    /// The elevated settings; empty when no page needs them.
    virtual std::shared_ptr<ElevatedSettings> AdminHandle() { return m_adminHandle; }

    /// Makes sure that the elevated settings are there, asking the user where they are not, or anew with `reopen`.
    /// False when the user declined.
    virtual bool ShowUAC(bool reopen);

    /// Tells that elevated pages have closed; the last one takes the elevated settings with it.
    void SetUnusedUI(std::uint32_t bits);

    void UninitialiseAdminHandle();

    /// Ends an action that needed the elevated settings: drops them while no page is open that would.
    void ReleaseUnusedAdminHandle();

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
    void LoadUnread();
    void OnSettingsSave();

    void PublishSwitch(const VariableIdentifier& state, const VariableIdentifier& status, bool on);
    bool OpenAdminHandle();

    const std::weak_ptr<SystemSettings> m_systemSettings;
    const std::weak_ptr<UserSettings> m_userSettings;
    std::shared_ptr<ElevatedSettings> m_adminHandle;
    std::string m_userSid;
    std::uint32_t m_unusedUI = 0; // the elevated pages that are open
};
