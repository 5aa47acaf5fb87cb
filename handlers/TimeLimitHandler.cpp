#include "handlers/TimeLimitHandler.h"

#include "handlers/ElevatedSettings.h"
#include "handlers/SharedVariables.h"
#include "logging/FunctionLog.h"

#include <algorithm>

using namespace SharedVariables;

namespace
{

const VariableIdentifier kTimeSlots("@TimeLimit\\Data:time_slots");
const VariableIdentifier kWeekdayHours("@TimeLimit\\Data:weekday_hours_value");
const VariableIdentifier kWeekdayCaption("@TimeLimit\\Strings:weekday_caption");
const VariableIdentifier kWeekendCaption("@TimeLimit\\Strings:weekend_caption");
const VariableIdentifier kDailyHoursMax("@TimeLimit\\Strings:daily_hours_max");
const VariableIdentifier kDailyHoursMin("@TimeLimit\\Strings:daily_hours_min");
const VariableIdentifier kDailyHoursSingular("@TimeLimit\\Strings:daily_hours_singular");
const VariableIdentifier kDailyHoursPlural("@TimeLimit\\Strings:daily_hours_plural");

constexpr std::size_t kHoursInWeek = 168;

/// From this many hours on the limit is the whole day.
constexpr int kUnlimitedHours = 8;

constexpr std::size_t kTuesday = 2; // stands for the weekdays

StrataSettings::Seconds LimitOf(int hours)
{
    return std::chrono::hours(hours < kUnlimitedHours ? hours : 24);
}

int HoursOf(StrataSettings::Seconds limit)
{
    const auto hours = std::chrono::duration_cast<std::chrono::hours>(limit).count();
    return static_cast<int>(std::clamp<std::int64_t>(hours, 0, kUnlimitedHours));
}

} // namespace

const NotifyRule TimeLimitHandler::kNotifyRules[] = {
    {kLoadData, &TimeLimitHandler::Load},
    {kSave, &TimeLimitHandler::Save},
};

TimeLimitHandler::TimeLimitHandler(const std::shared_ptr<UserSettings>& userSettings,
                                   const std::shared_ptr<MainGuiHandler>& mainGui)
    : Handler(L"TimeLimitHandler::OnNotify"), m_userSettings(userSettings), m_mainGui(mainGui)
{
    const EntryLog log(L"TimeLimitHandler::TimeLimitHandler");
}

TimeLimitHandler::~TimeLimitHandler()
{
    const EntryLog log(L"TimeLimitHandler::~TimeLimitHandler");
}

bool TimeLimitHandler::Initialize(IPlugInManager* manager)
{
    const EntryLog log(L"TimeLimitHandler::Initialize");
    if (!m_variables.Obtain(log, manager))
        return false;
    m_variables.Register({kTimeSlots, kWeekdayHours, kWeekdayCaption, kWeekendCaption, kDailyHoursMax, kDailyHoursMin,
                          kDailyHoursSingular, kDailyHoursPlural});
    Follow(kNotifyRules);
    return true;
}

void TimeLimitHandler::Load()
{
    const EntryLog log(L"TimeLimitHandler::Load");
    const auto user = m_userSettings.lock();
    if (!user)
        return;
    const Settings::Time& time = user->Settings().time;
    m_given = {HoursOf(time.quotas.days[kTuesday].Duration.Get()), time.curfews.ToLegacyUiString()};
    m_variables.Set(kTimeSlots, QString::fromStdString(m_given.timeSlots));
    m_variables.Set(kWeekdayHours, m_given.hours);
}

void TimeLimitHandler::Save()
{
    const EntryLog log(L"TimeLimitHandler::Save");
    const auto elevated = FindElevatedSettings(log, m_mainGui, L"initalized");
    if (!elevated)
        return;

    const std::string timeSlots = m_variables.Get(kTimeSlots).toByteArray().toStdString();
    if (timeSlots.size() != kHoursInWeek)
    {
        LOG(log, 3, L"%s: incorrect timeSlotsArr length: %hs", timeSlots.c_str());
        return;
    }
    const QVariant limit = m_variables.Get(kWeekdayHours);
    bool isNumber = false;
    const int hours = limit.toInt(&isNumber);
    if (!isNumber || hours < 0)
    {
        LOG(log, 3, L"%s: incorrect number of hours: %ls", limit.toString().toStdWString().c_str());
        return;
    }
    SaveDailyTimeLimits(elevated->WritableSettings().time, {hours, timeSlots});
    elevated->Save();
}

void TimeLimitHandler::SaveDailyTimeLimits(Settings::Time& time, const Page& page)
{
    const EntryLog log(L"TimeLimitHandler::SaveDailyTimeLimits");
    if (page.hours != m_given.hours)
        for (Settings::Quota& quota : time.quotas.days)
            quota.Duration.Set(LimitOf(page.hours));
    if (page.timeSlots.empty())
        LOG(log, 3, L"%s: No data to parse");
    else if (!time.curfews.FromLegacyUiString(page.timeSlots, m_given.timeSlots))
        LOG(log, 2, L"%s: Failed to parse %hs", page.timeSlots.c_str());
    m_given = page;
}
