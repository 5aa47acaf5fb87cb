#pragma once

#include "handlers/Handler.h"

#include <QVariant>

class MainGuiHandler;

/// Serves the web page filter pages: what each category of websites is allowed, the children's mode, and the list of
/// allowed websites. UI thread only.
class WebFilteringHandler : public Handler
{
    Q_OBJECT

public:
    WebFilteringHandler(const std::shared_ptr<SystemSettings>& systemSettings,
                        const std::shared_ptr<UserSettings>& userSettings);
    ~WebFilteringHandler() override;

    /// False without a data peer.
    bool Initialize(IPlugInManager* manager, const std::shared_ptr<MainGuiHandler>& mainGui);

    void Load();
    void Save();

    /// {"Categories": {key: allowed}}; also publishes whether any category is blocked.
    QVariantMap LoadCategoriesFromStrata(const Settings::Categories& categories);

    /// Takes such a map. A group's entry also stands for its members that have none of their own; unknown names are
    /// skipped, and so is what is no choice by what the page was loaded from (see IsChosen()), where that is not null.
    static void SetCategoriesToStrata(Settings::Categories& categories, const QVariantMap& map,
                                      const Settings::Categories* shown = nullptr);

    /// Table rows {"0": URL}, in list order.
    static QVariantList ConvertList(const std::set<Settings::Site>& sites);

private:
    static const NotifyRule kNotifyRules[];

    void OnChildMode();
    void OnTeenMode();
    void OnShowFragfinn();

    const std::weak_ptr<SystemSettings> m_systemSettings;
    const std::weak_ptr<UserSettings> m_userSettings;
    std::weak_ptr<MainGuiHandler> m_mainGui;
};
