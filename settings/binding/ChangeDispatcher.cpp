#include "settings/binding/ChangeDispatcher.h"

#include "settings/binding/PropertyBase.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>

namespace StrataSettings
{

namespace
{

QEvent::Type ChangesWaiting()
{
    static const int type = QEvent::registerEventType();
    return static_cast<QEvent::Type>(type);
}

} // namespace

ChangeDispatcher::Registration::~Registration()
{
    if (const auto subscribers = m_subscribers.lock())
        subscribers->erase(m_id);
}

ChangeDispatcher::ChangeDispatcher() = default;
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
    const std::wstring& key = property.GetKey().Text();
    if (std::find(m_waiting.begin(), m_waiting.end(), key) != m_waiting.end())
        return;
    if (m_waiting.empty())
        QCoreApplication::postEvent(this, new QEvent(ChangesWaiting()));
    m_waiting.push_back(key);
}

bool ChangeDispatcher::event(QEvent* event)
{
    if (event->type() != ChangesWaiting())
        return QObject::event(event);

    std::vector<std::wstring> keys;
    {
        const std::lock_guard lock(m_mutex);
        keys.swap(m_waiting);
    }
    for (const std::wstring& key : keys)
        Deliver(key);
    return true;
}

void ChangeDispatcher::Deliver(const std::wstring& key)
{
    // A callback may subscribe and unsubscribe, itself included: go by the numbers, which only grow.
    const std::shared_ptr<Subscribers> subscribers = m_subscribers;
    for (auto next = subscribers->begin(); next != subscribers->end();)
    {
        const std::uint64_t id = next->first;
        if (next->second.key == key)
        {
            const std::shared_ptr<const ChangeCallback> callback = next->second.callback;
            (*callback)(key);
        }
        next = subscribers->upper_bound(id);
    }
}

} // namespace StrataSettings
