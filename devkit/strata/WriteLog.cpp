#include "devkit/strata/WriteLog.h"

#include "text/Utf.h"

#include <utility>

namespace Strata
{

void WriteLog::SetObserver(OrbStrataWriteObserver observer, void* context)
{
    const std::lock_guard lock(m_telling);
    m_observer = observer;
    m_context = context;
    m_observerThread = std::this_thread::get_id();
    m_hasObserver = observer != nullptr;
}

void WriteLog::Add(const Change& change, OrbStrataWriter by)
{
    if (m_hasObserver)
    {
        const std::lock_guard lock(m_mutex);
        m_queue.push_back({change, by});
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
            Tell(write);
        lock.lock();
    }
    m_teller = std::thread::id();
}

void WriteLog::Tell(const Write& write) const
{
    const std::wstring key = Text::FromUtf8(write.change.key);
    const OrbStrataEntry entry = ViewOf(key.c_str(), write.change.entry);
    const OrbStrataWrite told{write.change.scope.c_str(), &entry, write.change.valueWrite, write.by};
    m_observer(m_context, &told);
}

} // namespace Strata
