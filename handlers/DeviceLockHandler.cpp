#include "handlers/DeviceLockHandler.h"

#include "delay_load/NlFlyerApi.h"
#include "delay_load/OrbDpApi.h"
#include "handlers/LocalTime.h"
#include "logging/FunctionLog.h"
#include "platform/ElevationOwner.h"
#include "settings/binding/StoreHandle.h"

#include <QLocale>

#include <iterator>

using StrataSettings::Minutes;

namespace
{

const VariableIdentifier kShowBlockDialog("@Veridan\\TimeLock\\Triggers:show_block_dialog");
const VariableIdentifier kCloseBlockDialog("@Veridan\\TimeLock\\Triggers:close_block_dialog");
const VariableIdentifier kGrabShortcuts("@Veridan\\TimeLock\\Triggers:grab_shortcuts");
const VariableIdentifier kReleaseShortcuts("@Veridan\\TimeLock\\Triggers:release_shortcuts");
const VariableIdentifier kShowExtendTimeDialog("@Veridan\\TimeLock\\Triggers:show_extend_time_dialog");
const VariableIdentifier kRequestExtendTimeDialog("@Veridan\\TimeLock\\Triggers:request_extend_time_dialog");
const VariableIdentifier kExtendTime("@Veridan\\TimeLock\\Triggers:extend_time");
const VariableIdentifier kCancelExtendTimeDialog("@Veridan\\TimeLock\\Triggers:cancel_extend_time_dialog");
const VariableIdentifier kExtendedByIndex("@Veridan\\TimeLock\\Data:time_extended_by_index");
const VariableIdentifier kBlockDescription("@Veridan\\TimeLock\\Data:block_description");
const VariableIdentifier kFlyerTitle("@Veridan\\TimeLock\\Strings:flyer_title");
const VariableIdentifier kFlyerTitleSingular("@Veridan\\TimeLock\\Strings:flyer_title_singular");
const VariableIdentifier kFlyerDescription("@Veridan\\TimeLock\\Strings:flyer_description");
const VariableIdentifier kExtendCaption("@Veridan\\TimeLock\\Strings:extend_caption");
const VariableIdentifier kCloseCaption("@Veridan\\TimeLock\\Strings:close_caption");
const VariableIdentifier kDescriptionUntil("@Veridan\\TimeLock\\Strings:block_description2");
const VariableIdentifier kDescriptionOpenEnded("@Veridan\\TimeLock\\Strings:block_description3");
const VariableIdentifier kToday("@Veridan\\TimeLock\\Strings:today");
const VariableIdentifier kTomorrow("@Veridan\\TimeLock\\Strings:tomorrow");

constexpr const wchar_t* kClientId = L"vdn_device_lock_handler";
constexpr int kReassertInterval = 1500; // ms
constexpr int kExtensions[] = {5, 15, 30, 60};
constexpr int kLockedOpenEnded = -1;
constexpr int kFlyerKind = 3;
constexpr int kFlyerPlacement = -2;

std::wstring Wide(const QString& text)
{
    return text.toStdWString();
}

/// A localised text with its place filled; a text without one stays as it is.
QString Filled(QString text, const QString& value)
{
    return text.replace(QLatin1String("%1"), value);
}

} // namespace

DeviceLockHandler::DeviceLockHandler(const std::shared_ptr<SystemSettings>& systemSettings,
                                     const std::shared_ptr<UserSettings>& userSettings)
    : Handler(L"DeviceLockHandler::OnNotify"), m_userSettings(userSettings), m_systemSettings(systemSettings)
{
    m_timer.setInterval(kReassertInterval);
    connect(&m_timer, &QTimer::timeout, this, &DeviceLockHandler::ReassertTimeLock);
    connect(this, &DeviceLockHandler::TimeLockTriggered, this, &DeviceLockHandler::OnTimeLockTrigger);
    const EntryLog log(L"DeviceLockHandler::DeviceLockHandler");
}

DeviceLockHandler::~DeviceLockHandler()
{
    const EntryLog log(L"DeviceLockHandler::~DeviceLockHandler");
}

bool DeviceLockHandler::Initialize(IPlugInManager* manager)
{
    const EntryLog log(L"DeviceLockHandler::Initialize");
    if (!m_variables.Obtain(log, manager))
        return false;
    m_variables.Register({kExtendedByIndex, kBlockDescription});
    m_variables.Subscribe({kRequestExtendTimeDialog}, "1OnRequestExtendTimeDialog()");
    m_variables.Subscribe({kExtendTime}, "1OnTimeLockExtend()");
    m_variables.Subscribe({kCancelExtendTimeDialog}, "1OnTimeLockExtendCancel()");
    m_variables.Set(kBlockDescription, String(kDescriptionUntil));
    if (!m_userSettings)
    {
        LOG(log, 5, L"%s: user settings controller missing. UI is blind to time lock changes");
        return true;
    }
    Follow(*m_userSettings, m_userSettings->Settings().internal.timeLimitTrigger, [this](const std::wstring& key) {
        if (Trigger() != m_trigger) // else told of something else, such as a new constraint
            Q_EMIT TimeLockTriggered(QString::fromStdWString(key).toStdString());
    });
    return true;
}

bool DeviceLockHandler::Elevate()
{
    const FunctionLog log(L"DeviceLockHandler::Elevate");
    const Platform::ElevationOwner owner;
    OrbStrataResult result = ORB_STRATA_INVALID_HANDLE;
    const auto handle = StrataSettings::StoreHandle::Open(true, kSettingsStore, L"S-1-5-18", kClientId, result);
    if (!handle)
        LOG(log, 3, L"%s: Could not acquire elevated handle.");
    return static_cast<bool>(handle);
}

void DeviceLockHandler::OnRequestExtendTimeDialog()
{
    const EntryLog log(L"DeviceLockHandler::OnRequestExtendTimeDialog");
    PauseTimeLock();
    const bool shown = m_variables.Fire(kShowExtendTimeDialog);
    LOG(log, 5, L"%s: %d", shown ? 1 : 0);
}

void DeviceLockHandler::OnTimeLockExtend()
{
    const EntryLog log(L"DeviceLockHandler::OnTimeLockExtend");
    if (!Elevate())
        return ResumeTimeLock();

    int index = -1;
    const Minutes minutes = ChosenExtension(index);
    LOG(log, 5, L"%s: Extending with index %d, i.e. %d minutes.", index, minutes.count());
    if (minutes == Minutes(0))
        return ResumeTimeLock();
    ReleaseTimeLock();
    m_trigger.reset(); // the same value again would be a new lock
    if (!StoreExtension(minutes) && m_userSettings)
        LockAsTold(Trigger()); // the service does not know of it: its lock is still in force
}

void DeviceLockHandler::OnTimeLockExtendCancel()
{
    const EntryLog log(L"DeviceLockHandler::OnTimeLockExtendCancel");
    ResumeTimeLock();
}

Minutes DeviceLockHandler::ChosenExtension(int& index) const
{
    bool chosen = false;
    index = m_variables.Get(kExtendedByIndex).toInt(&chosen);
    if (!chosen)
        index = -1;
    const bool known = index >= 0 && index < static_cast<int>(std::size(kExtensions));
    return Minutes(known ? kExtensions[index] : 0);
}

/// The service follows changes only: an extension that is stored already is written over a 0.
bool DeviceLockHandler::StoreExtension(Minutes minutes)
{
    if (!m_systemSettings)
        return false;
    auto& extension = m_systemSettings->WritableSettings().internal.timeLimitExtension;
    if (extension.Get() == minutes)
    {
        extension.Set(Minutes(0));
        if (!m_systemSettings->Save())
        {
            extension.Set(minutes); // may still be stored: the next try passes through 0, too
            return false;
        }
    }
    return extension.Set(minutes) == StrataSettings::SetResult::Stored && m_systemSettings->Save();
}

void DeviceLockHandler::OnTimeLockTrigger()
{
    const FunctionLog log(L"DeviceLockHandler::OnTimeLockTrigger");
    if (!m_userSettings)
        return;
    const int trigger = Trigger();
    LOG(log, 5, L"%s: Trigger %d", trigger);
    m_trigger = trigger;
    if (trigger >= 0)
        ReleaseTimeLock();
    if (LockAsTold(trigger))
        SendBlockMetrics();
    if (trigger > 0)
        ShowFlyer(trigger);
}

int DeviceLockHandler::Trigger() const
{
    return m_userSettings->Settings().internal.timeLimitTrigger.Get();
}

bool DeviceLockHandler::LockAsTold(int trigger)
{
    if (trigger >= 0)
        return false;
    TriggerTimeLock(trigger == kLockedOpenEnded ? 0 : -static_cast<std::int64_t>(trigger));
    return true;
}

void DeviceLockHandler::TriggerTimeLock(std::int64_t nextAllowedTime)
{
    const FunctionLog log(L"DeviceLockHandler::TriggerTimeLock");
    LOG(log, 5, L"%s: Block dialog, next allowed time: %I64d", nextAllowedTime);
    m_nextAllowedTime = nextAllowedTime;
    DescribeTimeLock();
    const bool shown = m_variables.Fire(kShowBlockDialog);
    const bool grabbed = m_variables.Fire(kGrabShortcuts);
    if (!m_paused) // the extend dialog is open: the lock is re-asserted when it closes
        m_timer.start();
    LOG(log, 5, L"%s: %d/%d", shown ? 1 : 0, grabbed ? 1 : 0);
}

void DeviceLockHandler::DescribeTimeLock()
{
    m_describedOn = LocalTime::Today();
    m_variables.Set(kBlockDescription, m_nextAllowedTime != 0
                                           ? Filled(String(kDescriptionUntil), DayAndTime(m_nextAllowedTime))
                                           : String(kDescriptionOpenEnded));
}

void DeviceLockHandler::ReleaseTimeLock()
{
    const FunctionLog log(L"DeviceLockHandler::ReleaseTimeLock");
    m_timer.stop();
    m_paused = false;
    const bool closed = m_variables.Fire(kCloseBlockDialog);
    const bool released = m_variables.Fire(kReleaseShortcuts);
    LOG(log, 5, L"%s: %d/%d", closed ? 1 : 0, released ? 1 : 0);
}

void DeviceLockHandler::ReassertTimeLock()
{
    if (!m_timer.isActive())
        return;
    if (LocalTime::Today() != m_describedOn) // "tomorrow" has become "today"
        DescribeTimeLock();
    m_variables.Fire(kShowBlockDialog);
    m_variables.Fire(kGrabShortcuts);
}

void DeviceLockHandler::PauseTimeLock()
{
    if (!m_timer.isActive())
        return;
    m_timer.stop();
    m_paused = true;
}

void DeviceLockHandler::ResumeTimeLock()
{
    if (!m_paused)
        return;
    m_timer.start();
    m_paused = false;
}

QString DeviceLockHandler::DayAndTime(std::int64_t time) const
{
    const QDateTime local = LocalTime::At(StrataSettings::TimePoint(std::chrono::seconds(time)));
    const auto named = [this](const VariableIdentifier& id, const char* otherwise) {
        const QString name = String(id);
        return name.isEmpty() ? UiString(otherwise) : name;
    };
    QString day;
    switch (LocalTime::Today().daysTo(local.date()))
    {
    case 0:
        day = named(kToday, "Today");
        break;
    case 1:
        day = named(kTomorrow, "Tomorrow");
        break;
    default:
        day = QLocale().toString(local.date(), QLocale::ShortFormat);
        break;
    }
    return day + local.toString(UiString(" hh:mm"));
}

void DeviceLockHandler::SendBlockMetrics()
{
    const FunctionLog log(L"DeviceLockHandler::SendBlockMetrics");
    const int error = OrbDpApi_MetricsRecordMajorEvent(600, "vdn_block", L"{\"type\":\"TL_Devicelock\"}");
    if (error != 0)
        LOG(log, 2, L"%s: OrbDpApi_MetricsRecordMajorEvent failed with error: %d", error);
}

void DeviceLockHandler::ShowFlyer(int minutesLeft)
{
    const FunctionLog log(L"DeviceLockHandler::ShowFlyer");
    LOG(log, 5, L"%s: Notification flyer, minutes left: %d", minutesLeft);
    const QString title =
        Filled(String(minutesLeft == 1 ? kFlyerTitleSingular : kFlyerTitle), QString::number(minutesLeft));
    NlFlyerHandle flyer = nullptr;
    if (const int error =
            NlFlyer_CreateFlyer(0, Wide(title).c_str(), Wide(String(kFlyerDescription)).c_str(), kFlyerKind, &flyer);
        error != 0)
    {
        LOG(log, 3, L"%s: Error creating a flyer: %d", error);
        return;
    }

    const QByteArray action = kRequestExtendTimeDialog.ToString().toUtf8();
    const NlFlyerButton extendButton{0, action.constData(), 0};
    if (const int error = NlFlyer_AddButton(flyer, Wide(String(kExtendCaption)).c_str(), &extendButton, 0); error != 0)
        LOG(log, 3, L"%s: Error adding action button: %d", error);
    const NlFlyerButton closeButton{0, nullptr, 0};
    if (const int error = NlFlyer_AddButton(flyer, Wide(String(kCloseCaption)).c_str(), &closeButton, 0); error != 0)
        LOG(log, 3, L"%s: Error adding close button: %d", error);
    if (const int error = NlFlyer_ShowFlyer(flyer, kFlyerPlacement, 0); error != 0)
    {
        LOG(log, 3, L"%s: Error showing a flyer: %d", error);
        NlFlyer_CloseFlyer(flyer);
    }
}
