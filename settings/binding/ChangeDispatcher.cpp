#include "settings/binding/ChangeDispatcher.h"

#include "settings/binding/PropertyBase.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>
#include <utility>

namespace StrataSettings
{

namespace
{

QEvent::Type ChangesWaiting()
{
    static const int s_type = QEvent::registerEventType();
    return static_cast<QEvent::Type>(s_type);
}

} // namespace

ChangeDispatcher::Registration::~Registration()
{
    if (const auto subscribers = m_subscribers.lock())
        subscribers->erase(m_id);
}

ChangeDispatcher::ChangeDispatcher(Retry retry) : m_retry(std::move(retry)) {}
ChangeDispatcher::~ChangeDispatcher() = default;

ChangeDispatcher::Registration ChangeDispatcher::Subscribe(std::wstring key, ChangeCallback callback)
{
    m_subscribers->emplace(++m_lastId,
                           Subscriber{std::move(key), std::make_shared<const ChangeCallback>(std::move(callback))});
    return Registration(m_subscribers, m_lastId);
}

void ChangeDispatcher::OnPropertyChanged(const PropertyBase& property)
{
    const std::lock_guard lock(m_mutex);
    const std::wstring& key = property.GetKey().String();
    if (std::find(m_waiting.begin(), m_waiting.end(), key) != m_waiting.end())
        return;
    m_waiting.push_back(key);
    Wake();
}

void ChangeDispatcher::OnMissing()
{
    const std::lock_guard lock(m_mutex);
    m_missing = true;
    Wake();
}

void ChangeDispatcher::Wake()
{
    if (!std::exchange(m_woken, true))
        QCoreApplication::postEvent(this, new QEvent(ChangesWaiting()));
}

bool ChangeDispatcher::event(QEvent* event)
{
    if (event->type() != ChangesWaiting())
        return QObject::event(event);

    std::vector<std::wstring> keys;
    bool missing = false;
    {
        const std::lock_guard lock(m_mutex);
        m_woken = false;
        keys.swap(m_waiting);
        missing = std::exchange(m_missing, false);
    }
    if (missing && m_retryTimer == 0 && m_retry)
        m_retryTimer = startTimer(kRetryInterval);

    const std::weak_ptr<Subscribers> subscribers = m_subscribers; // a callback may destroy the dispatcher
    for (const std::wstring& key : keys)
        Deliver(subscribers, key);
    return true;
}

void ChangeDispatcher::timerEvent(QTimerEvent*)
{
    killTimer(std::exchange(m_retryTimer, 0));
    m_retry();
}

void ChangeDispatcher::Deliver(const std::weak_ptr<Subscribers>& subscribers, const std::wstring& key)
{
    // A callback may subscribe and unsubscribe, itself included: go by the numbers, which only grow.
    std::uint64_t last = 0;
    while (const std::shared_ptr<const ChangeCallback> callback = Next(subscribers, key, last))
        (*callback)(key);
}

std::shared_ptr<const ChangeCallback> ChangeDispatcher::Next(const std::weak_ptr<Subscribers>& subscribers,
                                                             const std::wstring& key, std::uint64_t& last)
{
    const auto present = subscribers.lock();
    if (!present)
        return nullptr;
    const auto next = std::find_if(present->upper_bound(last), present->end(),
                                   [&key](const auto& entry) { return entry.second.key == key; });
    if (next == present->end())
        return nullptr;
    last = next->first;
    return next->second.callback;
}

} // namespace StrataSettings
