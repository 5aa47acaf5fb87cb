#pragma once

#include "devkit/strata/OrbStrataControl.h"

#include <atomic>
#include <deque>
#include <mutex>
#include <string>
#include <thread>

namespace Strata
{

/// Tells the write observer of value writes, in the order in which they were added, one at a time and outside every
/// other lock. Thread-safe.
class WriteLog
{
public:
    void SetObserver(OrbStrataWriteObserver observer, void* context);
    bool HasObserver() const { return m_hasObserver; }

    void Add(std::string sid, std::string key, bool byPlugIn);
    /// Returns when the observer has been told of everything added so far; at once if the observer itself calls.
    void Tell();

private:
    struct Write
    {
        std::string sid;
        std::string key;
        bool byPlugIn;
    };

    std::atomic<bool> m_hasObserver = false;
    OrbStrataWriteObserver m_observer = nullptr;
    void* m_context = nullptr;

    std::mutex m_telling;
    std::atomic<std::thread::id> m_teller;
    std::mutex m_mutex; // guards the queue; taken last
    std::deque<Write> m_queue;
};

} // namespace Strata
