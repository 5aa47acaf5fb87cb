#pragma once

#include "devkit/strata/Entry.h"
#include "devkit/strata/Stamp.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace Strata
{

/// What someone wants to be told of, and how: through one of the two functions.
struct Interest
{
    std::string key;        ///< the key, or what keys begin with
    bool byPrefix = false;  ///< which of the two
    int32_t changeType = 0; ///< 0: of either type
    OrbStrataCallback callback = nullptr;
    OrbStrataWatcher watcher = nullptr;
    void* context = nullptr;
};

struct Subscription
{
    uintptr_t handle = 0; ///< whose own writes are not told
    std::string scope;    ///< a SID
    Interest interest;
};

/// Delivers changes to subscribers, one after the other, on a thread of its own that runs from the first Start to the
/// end of the notifier. The thread also looks for other processes' commits, by calling `refresh` after every stamp.
/// No callback runs under a lock of the notifier. Thread-safe.
class Notifier
{
public:
    /// `refresh` is called on the notifier's thread and announces what it finds.
    Notifier(std::string stampPath, std::function<void()> refresh);
    Notifier(const Notifier&) = delete;
    Notifier& operator=(const Notifier&) = delete;
    ~Notifier();

    void Start();

    void Add(uintptr_t id, Subscription subscription);
    /// False: `handle` has no subscription `id`. Returns when its callback neither runs nor will run; called on the
    /// notifier's thread, it does not wait.
    bool Remove(uintptr_t handle, uintptr_t id);
    void RemoveAll(uintptr_t handle);

    /// Queues a change for everyone who subscribed to it, but for the handle that made it (0: none of this process).
    void Announce(const Change& change, uintptr_t origin);

    /// While it is on, what is announced waits. When it returns, no callback runs; not to be called by one.
    void Hold(bool on);

    /// Waits until every callback for what has been announced so far has returned. False: time-out, or called on the
    /// notifier's thread.
    bool WaitUntilDelivered(std::chrono::steady_clock::time_point deadline);

    /// Whether the caller is the notifier's thread.
    bool OnThread() const { return m_threadId.load() == std::this_thread::get_id(); }

private:
    struct Delivery
    {
        uintptr_t subscription;
        std::string key;
        int32_t changeType;
        Entry entry;
    };

    void Run();
    void DeliverQueued();
    static void Tell(const Interest& interest, const Delivery& delivery);
    void WaitWhileRunning(std::unique_lock<std::mutex>& lock, uintptr_t id);

    const std::string m_stampPath;
    const std::function<void()> m_refresh;

    std::mutex m_mutex;                  // guards what follows
    std::unique_ptr<StampWatch> m_watch; // there while the thread is: to end a watch can take ten milliseconds
    std::condition_variable m_returned;
    std::map<uintptr_t, Subscription> m_subscriptions; // in the order of subscription
    std::deque<Delivery> m_queue;
    uint64_t m_announced = 0;
    uint64_t m_delivered = 0;
    bool m_held = false;
    uintptr_t m_running = 0; // the subscription whose callback runs

    std::atomic<bool> m_stop = false;
    std::atomic<std::thread::id> m_threadId;
    std::thread m_thread;
};

} // namespace Strata
