#include "handlers/StatisticsHandler.h"

#include "handlers/LocalTime.h"
#include "handlers/SharedVariables.h"
#include "logging/FunctionLog.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace SharedVariables;

namespace
{

constexpr const char* kJson = "@Veridan\\Statistics:json";
constexpr const char* kCounterDescription = "@Localization\\ValueBar\\CounterDescription:";

constexpr int kAllTime = -1;
constexpr int kPeriods[] = {kAllTime, 365, 30, 7}; // days
constexpr int kTimerInterval = 60'000;

struct Counts
{
    std::uint32_t websitesChecked = 0;
    std::uint32_t bankingSessions = 0;
    std::uint32_t harmfulBlocks = 0;
    std::uint32_t wtsScans = 0;
    std::uint32_t wtsBlocks = 0;
};

struct Counter
{
    const char* key;
    const char* type;
    std::uint32_t Counts::*count;
};

constexpr Counter kCounters[] = {
    {"downloads_scanned", "checked", &Counts::wtsScans},
    {"downloads_blocked", "blocked", &Counts::wtsBlocks},
    {"web_sites_verified", "checked", &Counts::websitesChecked},
    {"web_sites_blocked", "blocked", &Counts::harmfulBlocks},
    {"banking_sessions_secured", "checked", &Counts::bankingSessions},
};

VariableIdentifier PeriodVariable(int period)
{
    const QString id = UiString(kJson);
    return period == kAllTime ? id : id + QLatin1Char('_') + QString::number(period);
}

VariableIdentifier ValueBarVariable()
{
    return UiString(kJson) + QLatin1String("_valuebar");
}

VariableIdentifier DescriptionVariable(const Counter& counter, std::uint32_t count)
{
    return QLatin1String(kCounterDescription) + QLatin1String(counter.key) +
           QLatin1String(count == 1 ? ".sing" : ".plur");
}

} // namespace

StatisticsHandler::StatisticsHandler(const std::shared_ptr<UserSettings>& userSettings)
    : Handler(L"StatisticsHandler::OnNotify"), m_userSettings(userSettings)
{
    const EntryLog log(L"StatisticsHandler::StatisticsHandler");
}

StatisticsHandler::~StatisticsHandler()
{
    const EntryLog log(L"StatisticsHandler::~StatisticsHandler");
}

bool StatisticsHandler::Initialize(IPlugInManager* manager)
{
    const EntryLog log(L"StatisticsHandler::Initialize");
    if (!m_variables.Obtain(log, manager))
        return false;
    m_variables.Subscribe({kLocalizationUpdated}, "1OnLocalizationUpdated(VariableIdentifier)");
    for (const int period : kPeriods)
        m_variables.Register(PeriodVariable(period));
    m_variables.Register(ValueBarVariable());
    m_lastUpdate = LocalTime::Today();
    UpdateStatistics();
    FollowUnreadCounters();
    StartTimer(kTimerInterval);
    return true;
}

/// Counters that grow are shown with the date's next change; but what could not be read at all is shown once it can be.
void StatisticsHandler::FollowUnreadCounters()
{
    if (!m_userSettings)
        return;
    Follow(*m_userSettings, m_userSettings->Settings().internal.statistics.dailyCounters, [this](const std::wstring&) {
        if (m_shownUnread)
            UpdateStatistics();
    });
}

void StatisticsHandler::StartTimer(int milliseconds)
{
    const FunctionLog log(L"StatisticsHandler::StartTimer");
    if (startTimer(milliseconds, Qt::CoarseTimer) == 0)
        LOG(log, 2, L"%s: Failed to start timer");
}

void StatisticsHandler::timerEvent(QTimerEvent*)
{
    const FunctionLog log(L"StatisticsHandler::timerEvent");
    const QDate today = LocalTime::Today();
    if (today == m_lastUpdate)
        return;
    LOG(log, 5, L"%s: Date changed");
    m_lastUpdate = today;
    UpdateStatistics();
}

void StatisticsHandler::OnLocalizationUpdated(VariableIdentifier)
{
    const EntryLog log(L"StatisticsHandler::OnLocalizationUpdated");
    UpdateStatistics();
}

void StatisticsHandler::UpdateStatistics()
{
    const EntryLog log(L"StatisticsHandler::UpdateStatistics");
    if (!m_userSettings)
    {
        LOG(log, 3, L"%s: Cannot get usersettings, unable to read statistics!");
        return;
    }
    const Settings::CommonStatistics& statistics = m_userSettings->Settings().internal.statistics;
    m_shownUnread = statistics.dailyCounters.ReadFailed();
    QString valueBar;
    for (const int period : kPeriods)
    {
        const QString text = StringOf(period, statistics);
        m_variables.Set(PeriodVariable(period), text);
        if (valueBar.isEmpty() && !text.isEmpty())
        {
            valueBar = text;
            m_variables.Set(ValueBarVariable(), valueBar);
        }
    }
}

QString StatisticsHandler::StringOf(int period, const Settings::CommonStatistics& statistics) const
{
    Counts counts;
    const auto today = static_cast<std::int32_t>(LocalTime::Today().toJulianDay());
    statistics.GetStatistics(static_cast<std::uint32_t>(period), counts.websitesChecked, counts.bankingSessions,
                             counts.harmfulBlocks, counts.wtsScans, counts.wtsBlocks, today);
    QJsonArray entries;
    for (const Counter& counter : kCounters)
    {
        const std::uint32_t count = counts.*counter.count;
        if (count == 0)
            continue;
        entries.append(QJsonObject{
            {QLatin1String("number"), static_cast<qint64>(count)},
            {QLatin1String("description"), m_variables.Get(DescriptionVariable(counter, count)).toString()},
            {QLatin1String("type"), QLatin1String(counter.type)},
        });
    }
    return entries.isEmpty() ? QString() : QString::fromUtf8(QJsonDocument(entries).toJson(QJsonDocument::Compact));
}
