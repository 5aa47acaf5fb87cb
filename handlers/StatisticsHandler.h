#pragma once

#include "handlers/Handler.h"

#include <QDate>

/// Publishes the counts of protective work over several periods, as JSON texts for the statistics views and the value
/// bar, and again when the localisation or the date changes. UI thread only.
class StatisticsHandler : public Handler
{
    Q_OBJECT

public:
    explicit StatisticsHandler(const std::shared_ptr<UserSettings>& userSettings);
    ~StatisticsHandler() override;

    /// False without a data peer.
    bool Initialize(IPlugInManager* manager);

    void UpdateStatistics();

public Q_SLOTS:
    void OnLocalizationUpdated(VariableIdentifier identifier);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void FollowUnreadCounters();
    void StartTimer(int milliseconds);

    /// The period's JSON text, empty where all its counts are 0.
    QString StringOf(int period, const Settings::CommonStatistics& statistics) const;

    const std::shared_ptr<UserSettings> m_userSettings;
    QDate m_lastUpdate;
    bool m_shownUnread = false;
};
