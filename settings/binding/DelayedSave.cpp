#include "settings/binding/DelayedSave.h"

#include <utility>

namespace StrataSettings
{

DelayedSave::DelayedSave(MethodLog log, SaveScope save, std::chrono::milliseconds tick)
    : m_log(std::move(log)), m_save(std::move(save)), m_tick(tick), m_thread([this] { DelayedSaveProcessing(); })
{}

DelayedSave::~DelayedSave()
{
    {
        const std::lock_guard lock(m_stopMutex);
        m_stopped = true;
    }
    m_stopEvent.notify_one();
    m_thread.join();
    while (!m_waiting.empty())
        SaveFirst();
}

void DelayedSave::Request(const std::string& sid)
{
    const std::lock_guard lock(m_mutex);
    m_waiting.insert(sid);
}

bool DelayedSave::IsWaiting(const std::string& sid) const
{
    const std::lock_guard lock(m_mutex);
    return m_waiting.count(sid) != 0;
}

DelayedSave::Clock::time_point DelayedSave::LastSave() const
{
    const std::lock_guard lock(m_mutex);
    return m_lastSave;
}

void DelayedSave::DelayedSaveProcessing()
{
    LOG(m_log, 5, L"%s: entering");
    std::unique_lock stop(m_stopMutex);
    while (!m_stopEvent.wait_for(stop, m_tick, [this] { return m_stopped; }))
    {
        stop.unlock();
        SaveFirst();
        stop.lock();
    }
    LOG(m_log, 5, L"%s: leaving");
}

void DelayedSave::SaveFirst()
{
    const std::lock_guard lock(m_mutex);
    if (m_waiting.empty())
        return;
    const auto first = m_waiting.begin();
    LOG(m_log, 5, L"%s: Now saving sid %hs", first->c_str());
    m_lastSave = Clock::now();
    m_save(*first);
    m_waiting.erase(first);
}

} // namespace StrataSettings
