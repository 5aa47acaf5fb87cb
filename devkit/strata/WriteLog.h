#pragma once

#include "devkit/strata/Entry.h"
#include "devkit/strata/OrbStrataControl.h"

#include <atomic>
#include <deque>
#include <mutex>
#include <string>
#include <thread>

namespace Strata
{

/// Tells the write observer of writes, in the order in which they were added, one at a time and outside every
/// other lock. Thread-safe.
class WriteLog
{
public:
    void SetObserver(OrbStrataWriteObserver observer, void* context);
    bool HasObserver() const { return m_hasObserver; }

    /// Whether the calling thread set the observer.
    bool OnObserverThread() const { return m_observerThread.load() == std::this_thread::get_id(); }

    void Add(const Change& change, OrbStrataWriter by);
    /// Returns when the observer has been told of everything added so far; at once if the observer itself calls.
    void Tell();

private:
    struct Write
    {
        Change change;
        OrbStrataWriter by;
    };

    void Tell(const Write& write) const;

    std::atomic<bool> m_hasObserver = false;
    std::atomic<std::thread::id> m_observerThread;
    OrbStrataWriteObserver m_observer = nullptr;
    void* m_context = nullptr;

    std::mutex m_telling;
    std::atomic<std::thread::id> m_teller;
    std::mutex m_mutex; // guards the queue; taken last
    std::deque<Write> m_queue;
};

} // namespace Strata
