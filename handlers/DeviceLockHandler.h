#pragma once

#include "handlers/Handler.h"

#include <QDate>
#include <QTimer>

#include <cstdint>
#include <optional>
#include <string>

/// Puts the computer-time limit into force on screen: warns with a flyer, blocks the desktop and releases it, as the
/// service's trigger value says, and lets a parent extend the time. UI thread only.
class DeviceLockHandler : public Handler
{
    Q_OBJECT

public:
    /// `userSettings` may be null: the handler is deaf to the trigger then.
    DeviceLockHandler(const std::shared_ptr<SystemSettings>& systemSettings,
                      const std::shared_ptr<UserSettings>& userSettings);
    ~DeviceLockHandler() override;

    /// False without a data peer.
    bool Initialize(IPlugInManager* manager);

    /// The host's event loop runs: evaluates the trigger as it is.
    void OnEventLoopReady() { OnTimeLockTrigger(); }

    /// Asks the user for the right to extend the time.
    static bool Elevate();

Q_SIGNALS:
    /// The time-lock trigger changed; takes the change to this object's thread.
    void TimeLockTriggered(const std::string& setting);

public Q_SLOTS:
    void OnRequestExtendTimeDialog();
    void OnTimeLockExtend();
    void OnTimeLockExtendCancel();

private:
    void OnTimeLockTrigger();
    int Trigger() const;

    /// Locks if the trigger's value says so.
    bool LockAsTold(int trigger);
    void TriggerTimeLock(std::int64_t nextAllowedTime);
    void DescribeTimeLock();
    void ReleaseTimeLock();
    void ReassertTimeLock();
    void PauseTimeLock();
    void ResumeTimeLock();
    bool StoreExtension(StrataSettings::Minutes minutes);
    void SendBlockMetrics();
    void ShowFlyer(int minutesLeft);

    StrataSettings::Minutes ChosenExtension(int& index) const;
    QString String(const VariableIdentifier& id) const { return m_variables.Get(id).toString(); }
    QString DayAndTime(std::int64_t time) const;

    QTimer m_timer{this}; // re-asserts the lock
    bool m_paused = false;
    std::optional<int> m_trigger;       // as it was last carried out
    std::int64_t m_nextAllowedTime = 0; // of the lock; 0: none is known
    QDate m_describedOn;
    const std::shared_ptr<UserSettings> m_userSettings;
    const std::shared_ptr<SystemSettings> m_systemSettings;
};
