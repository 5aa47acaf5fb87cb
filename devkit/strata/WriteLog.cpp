#include "devkit/strata/WriteLog.h"

#include "platform/Text.h"

#include <utility>

namespace Strata
{

void WriteLog::SetObserver(OrbStrataWriteObserver observer, void* context)
{
    const std::lock_guard lock(m_telling);
    m_observer = observer;
    m_context = context;
    m_hasObserver = observer != nullptr;
}

void WriteLog::Add(std::string sid, std::string key, bool byPlugIn)
{
    if (m_hasObserver)
    {
        const std::lock_guard lock(m_mutex);
        m_queue.push_back({std::move(sid), std::move(key), byPlugIn});
    }
}

void WriteLog::Tell()
{
    if (!m_hasObserver || m_teller.load() == std::this_thread::get_id())
        return;
    const std::lock_guard telling(m_telling);
    m_teller = std::this_thread::get_id();
    std::unique_lock lock(m_mutex);
    while (!m_queue.empty())
    {
        const Write write = std::move(m_queue.front());
        m_queue.pop_front();
        lock.unlock();
        if (m_observer)
            m_observer(m_context, write.sid.c_str(), Platform::FromUtf8(write.key).c_str(), write.byPlugIn);
        lock.lock();
    }
    m_teller = std::thread::id();
}

} // namespace Strata
