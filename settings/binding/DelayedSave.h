#pragma once

#include "logging/FunctionLog.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <thread>

namespace StrataSettings
{

/// Saves scopes on a thread of its own, at most one at each tick, so that the changes made between two ticks are
/// written once. Destruction ends the thread and saves what is still waiting, on the destroying thread.
class DelayedSave
{
public:
    using Clock = std::chrono::steady_clock;
    /// Saves one scope. Called with the set of waiting SIDs locked: it must not request another save.
    using SaveScope = std::function<void(const std::string& sid)>;

    static constexpr std::chrono::milliseconds kTick{3000};

    DelayedSave(MethodLog log, SaveScope save, std::chrono::milliseconds tick = kTick);
    ~DelayedSave();

    /// Any thread. Requests for a SID that is waiting already collapse into one.
    void Request(const std::string& sid);

    bool IsWaiting(const std::string& sid) const;

    /// When a scope was last saved; the clock's epoch when none was.
    Clock::time_point LastSave() const;

private:
    void DelayedSaveProcessing();
    void SaveFirst();

    const MethodLog m_log;
    const SaveScope m_save;
    const std::chrono::milliseconds m_tick;

    mutable std::mutex m_mutex;
    Clock::time_point m_lastSave{};
    std::set<std::string> m_waiting;

    std::mutex m_stopMutex;
    std::condition_variable m_stopEvent;
    bool m_stopped = false; // under m_stopMutex
    std::thread m_thread;
};

} // namespace StrataSettings
