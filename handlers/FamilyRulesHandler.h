#pragma once

#include "handlers/Handler.h"

#include <QTimer>
#include <QVariant>

class MainGuiHandler;

/// Feeds the family-rules overview: which rules are on, the allowances, the bedtimes and the minutes left today, which
/// count down once a minute. UI thread only.
class FamilyRulesHandler : public Handler
{
    Q_OBJECT

public:
    /// Either may be null.
    FamilyRulesHandler(const std::shared_ptr<SystemSettings>& systemSettings,
                       const std::shared_ptr<UserSettings>& userSettings);
    ~FamilyRulesHandler() override;

    /// False without a data peer.
    bool Initialize(IPlugInManager* manager, const std::shared_ptr<MainGuiHandler>& mainGui);

    void Load();

public Q_SLOTS:
    void OnLinkClicked();
    void OnRefreshQuotasRemaining();
    void OnReload();

private:
    static const NotifyRule kNotifyRules[];

    void SetupReloads();
    void FollowUnreadNecessity();
    void CheckTurnOnPCPageNecessity();
    void ActivateLegacyParenting();
    QVariantMap ReadDigiParentingData() const;
    bool IsLegacyMode() const;

    void LoadSwitches(const VdnSettings& settings);
    void LoadAllowances(const Settings::Quotas& quotas);
    void LoadBedtimes(const Settings::Curfews& curfews);

    QTimer m_timer{this};   // while minutes remain
    QTimer m_nextDay{this}; // else, until there may be some again
    const std::shared_ptr<SystemSettings> m_systemSettings;
    const std::shared_ptr<UserSettings> m_userSettings;
    bool m_initialised = false;
    bool m_necessityUnread = false;
};
