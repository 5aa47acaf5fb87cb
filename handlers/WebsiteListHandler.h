#pragma once

#include "handlers/Handler.h"

#include <QVariant>

#include <string>

class MainGuiHandler;

/// Serves the website restrictions page: the tables of allowed and denied websites, each with the user's own entries
/// and the administrator's. Applies the page's edits through the elevated settings. UI thread only.
class WebsiteListHandler : public Handler
{
    Q_OBJECT

public:
    using Sites = std::set<Settings::Site>;

    WebsiteListHandler(const std::shared_ptr<SystemSettings>& systemSettings,
                       const std::shared_ptr<UserSettings>& userSettings,
                       const std::shared_ptr<MainGuiHandler>& mainGui);
    ~WebsiteListHandler() override;

    /// False without a data peer.
    bool Initialize(IPlugInManager* manager);

    /// Publishes both tables; `key` tells what changed, if anything did.
    void Load(const std::wstring& key);

    void HandleAllowedActionItem();
    void HandleDeniedActionItem();
    void AddNewItem(const QString& url, bool allowed);
    void EditOldItem(const QVariant& edit, bool allowed);
    void RemoveItem(const QString& url);

    /// Table rows: the own sites, then the administrator's that are not among them; only those that are (not) allowed.
    QVariantList ConvertWebFilterList(const Sites& own, const Sites& administrator, bool allowed) const;

    std::shared_ptr<ElevatedSettings> GetSaveController() const;

public Q_SLOTS:
    void RefreshAllowedWebsitesList();
    void setReadOnly(bool readOnly);

private:
    static const NotifyRule kNotifyRules[];
    static const NotifyRule kDeniedRules[];

    struct RowStrings;

    /// {"0": URL, "readonly": bool, "tooltip": text}, the last for an administrator's entry.
    static QVariantMap ParseItemIntoMap(const QString& url, bool adminEntry, const RowStrings& texts);

    /// Takes the site out of the list; null when nothing was, else what is to be saved.
    std::shared_ptr<ElevatedSettings> Remove(const QString& url) const;

    void FollowSettings();
    void OnShowWebsiteList();
    void OnCloseWebsiteList();
    void OnLoadData();
    void ClearAllowed();
    void ClearDenied();
    void Clear(const VariableIdentifier& table, bool allowed);

    /// Whether any was removed, and the removal saved.
    bool RemoveAll(bool allowed);

    /// What is stored for a URL that the page sent; empty, after a log line, when it is no address.
    static std::string NewAddress(const QString& url);
    void Add(const std::string& address, bool allowed);
    void HandleActionItem(const FunctionLog& log, const VariableIdentifier& item, bool allowed);

    const std::weak_ptr<SystemSettings> m_systemSettings;
    const std::weak_ptr<UserSettings> m_userSettings;
    const std::weak_ptr<MainGuiHandler> m_mainGui;
    bool m_readOnly = false;
    bool m_pageOpen = false;
};
