#pragma once

#include "settings/binding/Observer.h"

#include <QObject>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace StrataSettings
{

/// Told of a setting's change, by its key.
using ChangeCallback = std::function<void(const std::wstring& key)>;

/// Brings store notifications to the thread that created the dispatcher, through its event loop. Changes of one key
/// that are waiting to be delivered are delivered as one. As long as something is missing, has it tried again.
class ChangeDispatcher final : public QObject, public Observer
{
    struct Subscriber
    {
        std::wstring key;
        std::shared_ptr<const ChangeCallback> callback;
    };
    using Subscribers = std::map<std::uint64_t, Subscriber>; // in the order of subscription

public:
    /// A callback's subscription; ends it when destroyed. False: it was not accepted. May outlive the dispatcher.
    class Registration
    {
    public:
        Registration() = default;
        Registration(Registration&& other) noexcept = default;
        Registration& operator=(Registration&& other) noexcept
        {
            std::swap(m_subscribers, other.m_subscribers);
            std::swap(m_id, other.m_id);
            return *this;
        }
        ~Registration();

        explicit operator bool() const noexcept { return !m_subscribers.expired(); }

    private:
        friend class ChangeDispatcher;
        Registration(const std::shared_ptr<Subscribers>& subscribers, std::uint64_t id)
            : m_subscribers(subscribers), m_id(id)
        {}

        std::weak_ptr<Subscribers> m_subscribers;
        std::uint64_t m_id = 0;
    };

    /// Tries again what is missing; says so to the observer when it still is.
    using Retry = std::function<void()>;
    static constexpr int kRetryInterval = 3000; // ms

    explicit ChangeDispatcher(Retry retry = {});
    ~ChangeDispatcher() override;

    /// The dispatcher's own thread.
    [[nodiscard]] Registration Subscribe(std::wstring key, ChangeCallback callback);

    /// Any thread.
    void OnPropertyChanged(const PropertyBase& property) override;
    void OnMissing() override;

protected:
    bool event(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    static void Deliver(const std::weak_ptr<Subscribers>& subscribers, const std::wstring& key);

    /// The key's first subscriber after number `last`, which becomes its own; null after the last one, or when the
    /// dispatcher is gone.
    static std::shared_ptr<const ChangeCallback> Next(const std::weak_ptr<Subscribers>& subscribers,
                                                      const std::wstring& key, std::uint64_t& last);

    /// Has event() called on the dispatcher's thread. Under m_mutex.
    void Wake();

    std::shared_ptr<Subscribers> m_subscribers = std::make_shared<Subscribers>();
    std::uint64_t m_lastId = 0;
    const Retry m_retry;
    int m_retryTimer = 0;

    std::mutex m_mutex;
    bool m_woken = false;                // under m_mutex
    bool m_missing = false;              // under m_mutex
    std::vector<std::wstring> m_waiting; // under m_mutex
};

} // namespace StrataSettings
