#include "handlers/FamilyRulesHandler.h"

#include "handlers/LocalTime.h"
#include "handlers/MainGuiHandler.h"
#include "handlers/RemainingTime.h"
#include "handlers/SharedVariables.h"
#include "logging/FunctionLog.h"
#include "platform/LastError.h"
#include "platform/Token.h"
#include "util/Handle.h"
#include "util/LaunchProcess.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>

#include <algorithm>

using StrataSettings::Seconds;

using namespace SharedVariables;

namespace
{

const VariableIdentifier kShowPage("@BrowsingProtection\\Data:show_family_rules_page");
const VariableIdentifier kDpInitialized("@ContentControl\\Data:current_user_dp_initialized");
const VariableIdentifier kContentEnabled("@ContentControl\\Data:enabled");
const VariableIdentifier kSearchFilterEnabled("@ContentControl\\Data:search_result_filter_enabled");
const VariableIdentifier kAdminWarning("@FamilyRules\\AdminWarning:enabled");
const VariableIdentifier kQuotasEnabled("@TimeLimit\\Data:quotas_enabled");
const VariableIdentifier kWeekdayHours("@TimeLimit\\Data:weekday_hours");
const VariableIdentifier kWeekdayMinutes("@TimeLimit\\Data:weekday_minutes");
const VariableIdentifier kWeekendHours("@TimeLimit\\Data:weekend_hours");
const VariableIdentifier kWeekendMinutes("@TimeLimit\\Data:weekend_minutes");
const VariableIdentifier kMinutesRemaining("@TimeLimit\\Data:minutes_remaining");
const VariableIdentifier kCurfewsEnabled("@TimeLimit\\Data:curfews_enabled");
const VariableIdentifier kWeekdayBedtime("@TimeLimit\\Data:bedtime_weekday_enabled");
const VariableIdentifier kWeekdayBedtimeStart("@TimeLimit\\Data:bedtime_weekday_start");
const VariableIdentifier kWeekdayBedtimeStop("@TimeLimit\\Data:bedtime_weekday_stop");
const VariableIdentifier kWeekendBedtime("@TimeLimit\\Data:bedtime_weekend_enabled");
const VariableIdentifier kWeekendBedtimeStart("@TimeLimit\\Data:bedtime_weekend_start");
const VariableIdentifier kWeekendBedtimeStop("@TimeLimit\\Data:bedtime_weekend_stop");
const VariableIdentifier kActivateLegacyParenting("@Veridan\\Settings\\Triggers:activate_legacy_parenting");
const VariableIdentifier kLinkClicked("@FamilyRules\\AdminWarning:LinkClicked");
const VariableIdentifier kDigiParentingData("@Hearth:DigiparentingData");

/// The days that stand for the weekdays and for the weekend: the page shows one value of each.
constexpr std::size_t kTuesday = 2;
constexpr std::size_t kSaturday = 6;

constexpr int kRefreshInterval = 60'000;                                  // ms
constexpr std::chrono::milliseconds kLongestWait = std::chrono::hours(1); // midnight moves when the clock is set
constexpr std::uint32_t kDetachedProcess = 8;
constexpr Seconds kDay = std::chrono::hours(24);

QString TimeString(Seconds sinceMidnight)
{
    const auto seconds = static_cast<int>((sinceMidnight % kDay).count());
    return QLocale().toString(QTime(0, 0).addSecs(seconds), QLocale::ShortFormat);
}

/// A night's forbidden time: from where the ranges reach midnight, taken together where they touch or overlap, until
/// the end of those that begin there; where the day has no such range, as the option says.
struct Bedtime
{
    Bedtime(const std::set<Settings::Curfew>& ranges, const Settings::CurfewOption& option)
        : start(option.rangeFrom.Get()), stop(option.rangeUntil.Get())
    {
        Seconds from(-1);
        Seconds until(-1);
        for (const Settings::Curfew& range : ranges) // in the order of their begin
        {
            if (range.From < Seconds(0) || range.From >= range.Until || range.Until > kDay)
                continue; // no time of the day
            if (range.From > until)
                from = range.From;
            until = std::max(until, range.Until);
            if (from == Seconds(0))
                stop = until;
            if (until == kDay)
                start = from;
        }
    }

    Seconds start;
    Seconds stop;
};

} // namespace

const NotifyRule FamilyRulesHandler::kNotifyRules[] = {
    {kLoadData, &FamilyRulesHandler::Load},
    {kActivateLegacyParenting, &FamilyRulesHandler::ActivateLegacyParenting},
};

FamilyRulesHandler::FamilyRulesHandler(const std::shared_ptr<SystemSettings>& systemSettings,
                                       const std::shared_ptr<UserSettings>& userSettings)
    : Handler(L"FamilyRulesHandler::OnNotify"), m_systemSettings(systemSettings), m_userSettings(userSettings)
{
    connect(&m_timer, SIGNAL(timeout()), this, SLOT(OnRefreshQuotasRemaining()));
    connect(&m_nextDay, SIGNAL(timeout()), this, SLOT(OnRefreshQuotasRemaining()));
    m_nextDay.setSingleShot(true);
    const EntryLog log(L"FamilyRulesHandler::FamilyRulesHandler");
}

FamilyRulesHandler::~FamilyRulesHandler()
{
    m_timer.stop();
    const EntryLog log(L"FamilyRulesHandler::~FamilyRulesHandler");
}

bool FamilyRulesHandler::Initialize(IPlugInManager* manager, const std::shared_ptr<MainGuiHandler>& mainGui)
{
    const EntryLog log(L"FamilyRulesHandler::Initialize");
    if (!m_variables.Obtain(log, manager))
        return false;
    m_variables.Register({kShowPage, kDpInitialized, kContentEnabled, kSearchFilterEnabled, kAdminWarning,
                          kQuotasEnabled, kWeekdayHours, kWeekdayMinutes, kWeekendHours, kWeekendMinutes,
                          kMinutesRemaining, kCurfewsEnabled, kWeekdayBedtime, kWeekdayBedtimeStart,
                          kWeekdayBedtimeStop, kWeekendBedtime, kWeekendBedtimeStart, kWeekendBedtimeStop});
    Follow(kNotifyRules);
    m_variables.Subscribe({kLinkClicked}, "1OnLinkClicked()");
    if (mainGui)
        connect(mainGui.get(), &MainGuiHandler::SelectedUserChanged, this, &FamilyRulesHandler::OnReload);
    SetupReloads();
    m_initialised = true;
    CheckTurnOnPCPageNecessity();
    return true;
}

void FamilyRulesHandler::SetupReloads()
{
    const EntryLog log(L"FamilyRulesHandler::SetupReloads");
    if (!m_userSettings)
    {
        LOG(log, 2, L"%s: user settings controller doesn't exist, can't set up reloads");
        return;
    }
    const auto reload = [this](const std::wstring&) {
        if (!QMetaObject::invokeMethod(this, "OnReload"))
            LOG(FunctionLog(L"FamilyRulesHandler::SetupReloads"), 2, L"%s: Failed to invoke method");
    };
    const Settings::Time& time = m_userSettings->Settings().time;
    for (const StrataSettings::PropertyBase* property : std::initializer_list<const StrataSettings::PropertyBase*>{
             &time.quotas.days[kTuesday].Duration, &time.quotas.days[kSaturday].Duration, &time.curfews.days[kTuesday],
             &time.curfews.days[kSaturday]})
        Follow(*m_userSettings, *property, reload);
    FollowUnreadNecessity();
}

/// The check is made once, at the start; but not with settings that could not be read then.
void FamilyRulesHandler::FollowUnreadNecessity()
{
    const auto check = [this](const std::wstring&) {
        if (m_necessityUnread)
            CheckTurnOnPCPageNecessity();
    };
    Follow(*m_userSettings, m_userSettings->Settings().internal.parentalControlsConfigured, check);
    if (m_systemSettings)
        Follow(*m_systemSettings, m_systemSettings->Settings().digiParenting.activated, check);
}

bool FamilyRulesHandler::IsLegacyMode() const
{
    return m_systemSettings && !m_systemSettings->Settings().digiParenting.activated.Get();
}

void FamilyRulesHandler::CheckTurnOnPCPageNecessity()
{
    const FunctionLog log(L"FamilyRulesHandler::CheckTurnOnPCPageNecessity");
    m_necessityUnread = m_systemSettings && m_userSettings &&
                        (m_systemSettings->Settings().digiParenting.activated.ReadFailed() ||
                         m_userSettings->Settings().internal.parentalControlsConfigured.ReadFailed());
    if (!m_initialised || !IsLegacyMode() || !m_userSettings)
    {
        LOG(log, 5, L"%s: Class not initialised or not in legacy mode.");
        return;
    }
    m_variables.Set(kDpInitialized, m_userSettings->Settings().internal.parentalControlsConfigured.Get());
}

void FamilyRulesHandler::ActivateLegacyParenting()
{
    const EntryLog log(L"FamilyRulesHandler::ActivateLegacyParenting");
    if (!m_initialised)
    {
        LOG(log, 2, L"%s: Class not initialised. Can't activate.");
        return;
    }
    m_necessityUnread = false;
    m_variables.Set(kDpInitialized, true);
    m_variables.Fire(kLoadData);
}

QVariantMap FamilyRulesHandler::ReadDigiParentingData() const
{
    const FunctionLog log(L"FamilyRulesHandler::LogDigiParentingData");
    const QVariantMap data = m_variables.Get(kDigiParentingData).toMap();
    if (data.isEmpty())
        LOG(log, 4, L"%s: digiParentingData empty");
    else
        LOG(log, 4, L"%s: %hs",
            QJsonDocument(QJsonObject::fromVariantMap(data)).toJson(QJsonDocument::Compact).constData());
    return data;
}

void FamilyRulesHandler::OnReload()
{
    const EntryLog log(L"FamilyRulesHandler::OnReload");
    Load();
}

void FamilyRulesHandler::Load()
{
    const EntryLog log(L"FamilyRulesHandler::Load");
    if (!m_systemSettings || !m_userSettings)
    {
        LOG(log, 2, L"%s: Cannot load settings: system settings or user settings controller missing");
        return;
    }
    const VdnSettings& settings = m_userSettings->Settings();
    LoadSwitches(settings);
    LoadAllowances(settings.time.quotas);
    LoadBedtimes(settings.time.curfews);
    OnRefreshQuotasRemaining();
}

void FamilyRulesHandler::LoadSwitches(const VdnSettings& settings)
{
    if (!IsLegacyMode())
    {
        const QVariantMap account = ReadDigiParentingData();
        m_variables.Set(kDpInitialized, account.value(QLatin1String("digiparenting_activated")).toBool() &&
                                            account.value(QLatin1String("strata_connected")).toBool());
    }
    m_variables.Set(kContentEnabled, settings.categories.enabled.Get());
    m_variables.Set(kSearchFilterEnabled, settings.searchResultFilter.enabled.Get());
    m_variables.Set(kQuotasEnabled, settings.time.quotas.enabled.Get());
    m_variables.Set(kCurfewsEnabled, settings.time.curfews.enabled.Get());
    m_variables.Set(kWeekdayBedtime, settings.time.curfews.schoolNights.enabled.Get());
    m_variables.Set(kWeekendBedtime, settings.time.curfews.weekends.enabled.Get());
    m_variables.Set(kShowPage, settings.webFiltering.activated.Get() || settings.timeLimits.activated.Get() ||
                                   settings.searchResultFilter.activated.Get());
    m_variables.Set(kAdminWarning, Platform::Get<Platform::Token>().IsUserMemberOfBuiltinGroup(
                                       nullptr, Platform::Token::kAdministrators));
}

void FamilyRulesHandler::LoadAllowances(const Settings::Quotas& quotas)
{
    const auto publish = [&](std::size_t day, const VariableIdentifier& hoursId, const VariableIdentifier& minutesId) {
        const std::int64_t seconds = std::clamp(quotas.days[day].Duration.Get(), Seconds(0), kDay).count();
        const std::int64_t hours = seconds / 3600;
        m_variables.Set(hoursId, static_cast<int>(hours));
        m_variables.Set(minutesId, static_cast<int>(seconds / 60 - hours * 60));
    };
    publish(kTuesday, kWeekdayHours, kWeekdayMinutes);
    publish(kSaturday, kWeekendHours, kWeekendMinutes);
}

void FamilyRulesHandler::LoadBedtimes(const Settings::Curfews& curfews)
{
    const Bedtime weekday(curfews.days[kTuesday].Get(), curfews.schoolNights);
    const Bedtime weekend(curfews.days[kSaturday].Get(), curfews.weekends);
    m_variables.Set(kWeekdayBedtimeStart, TimeString(weekday.start));
    m_variables.Set(kWeekdayBedtimeStop, TimeString(weekday.stop));
    m_variables.Set(kWeekendBedtimeStart, TimeString(weekend.start));
    m_variables.Set(kWeekendBedtimeStop, TimeString(weekend.stop));
}

void FamilyRulesHandler::OnRefreshQuotasRemaining()
{
    const EntryLog log(L"FamilyRulesHandler::OnRefreshQuotasRemaining");
    if (!m_userSettings)
        return;
    const VdnSettings& settings = m_userSettings->Settings();
    const std::optional<int> minutes = MinutesRemaining(settings.time, settings.internal, LocalTime::Now());
    m_timer.stop();
    m_nextDay.stop();
    if (minutes != 0)
        m_timer.start(kRefreshInterval);
    else
        m_nextDay.start(std::min(LocalTime::UntilMidnight(), kLongestWait));
    m_variables.Set(kMinutesRemaining, minutes ? QVariant(*minutes) : QVariant(UiString("unlimited")));
}

void FamilyRulesHandler::OnLinkClicked()
{
    const FunctionLog log(L"FamilyRulesHandler::OnLinkClicked");
    LOG(log, 5, L"%s: Running 'control.exe userpasswords'");
    const RAII::Handle process(LaunchProcess(L"control.exe", L"userpasswords", kDetachedProcess, nullptr));
    if (!process.Get())
        LOG(log, 2, L"%s: Failed to call control panel. Error: %lu", Platform::LastError());
}
