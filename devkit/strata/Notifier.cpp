#include "devkit/strata/Notifier.h"

#include "text/Utf.h"

#include <utility>

namespace Strata
{

namespace
{

bool Concerns(const Subscription& subscription, const Change& change)
{
    const Interest& interest = subscription.interest;
    if (interest.changeType != 0 && interest.changeType != change.kind)
        return false;
    const bool sameKey =
        interest.byPrefix ? change.key.compare(0, interest.key.size(), interest.key) == 0 : change.key == interest.key;
    return sameKey && change.scope == subscription.scope;
}

} // namespace

Notifier::Notifier(std::string stampPath, std::function<void()> refresh)
    : m_stampPath(std::move(stampPath)), m_refresh(std::move(refresh))
{}

Notifier::~Notifier()
{
    m_stop = true;
    if (m_thread.joinable())
    {
        m_watch->Wake();
        m_thread.join();
    }
}

void Notifier::Start()
{
    const std::lock_guard lock(m_mutex);
    if (!m_thread.joinable())
    {
        m_watch = StampWatch::Open(m_stampPath);
        m_thread = std::thread([this] { Run(); });
    }
}

void Notifier::Add(uintptr_t id, Subscription subscription)
{
    Start();
    const std::lock_guard lock(m_mutex);
    m_subscriptions.emplace(id, std::move(subscription));
}

bool Notifier::Remove(uintptr_t handle, uintptr_t id)
{
    std::unique_lock lock(m_mutex);
    const auto at = m_subscriptions.find(id);
    if (at == m_subscriptions.end() || at->second.handle != handle)
        return false;
    m_subscriptions.erase(at);
    WaitWhileRunning(lock, id);
    return true;
}

void Notifier::RemoveAll(uintptr_t handle)
{
    std::unique_lock lock(m_mutex);
    for (auto at = m_subscriptions.begin(); at != m_subscriptions.end();)
    {
        if (at->second.handle != handle)
        {
            ++at;
            continue;
        }
        const uintptr_t id = at->first;
        m_subscriptions.erase(at);
        WaitWhileRunning(lock, id);
        at = m_subscriptions.upper_bound(id); // the lock was open meanwhile
    }
}

void Notifier::WaitWhileRunning(std::unique_lock<std::mutex>& lock, uintptr_t id)
{
    if (!OnThread())
        m_returned.wait(
            lock, [this, id] { return m_running != id; });
}

void Notifier::Announce(const Change& change, uintptr_t origin)
{
    const std::lock_guard lock(m_mutex);
    bool wanted = false;
    for (const auto& [id, subscription] : m_subscriptions)
    {
        if (subscription.handle != origin && Concerns(subscription, change))
        {
            m_queue.push_back({id, change.key, change.kind, change.entry});
            ++m_announced;
            wanted = true;
        }
    }
    if (wanted)
        m_watch->Wake();
}

void Notifier::Hold(bool on)
{
    std::unique_lock lock(m_mutex);
    m_held = on;
    if (on)
        m_returned.wait(lock, [this] { return m_running == 0; });
    else if (m_watch)
        m_watch->Wake();
}

bool Notifier::WaitUntilDelivered(std::chrono::steady_clock::time_point deadline)
{
    std::unique_lock lock(m_mutex);
    const uint64_t last = m_announced;
    return m_delivered >= last ||
           (!OnThread() && m_returned.wait_until(lock, deadline, [&] { return m_delivered >= last; }));
}

void Notifier::Run()
{
    m_threadId = std::this_thread::get_id();
    while (!m_stop)
    {
        m_refresh();
        DeliverQueued();
        m_watch->Wait();
    }
}

void Notifier::DeliverQueued()
{
    std::unique_lock lock(m_mutex);
    while (!m_queue.empty() && !m_held && !m_stop)
    {
        const Delivery delivery = std::move(m_queue.front());
        m_queue.pop_front();
        if (const auto at = m_subscriptions.find(delivery.subscription); at != m_subscriptions.end())
        {
            const Interest interest = at->second.interest;
            m_running = delivery.subscription;
            lock.unlock();
            Tell(interest, delivery);
            lock.lock();
            m_running = 0;
        }
        ++m_delivered;
        m_returned.notify_all();
    }
}

void Notifier::Tell(const Interest& interest, const Delivery& delivery)
{
    const std::wstring key = Text::FromUtf8(delivery.key);
    const OrbStrataEntry entry = ViewOf(key.c_str(), delivery.entry);
    if (interest.watcher)
        interest.watcher(interest.context, delivery.changeType, &entry);
    else
        interest.callback(interest.context, entry.key, delivery.changeType,
                          entry.type == ORB_STRATA_TYPE_OBJECT ? entry.text : nullptr);
}

} // namespace Strata
