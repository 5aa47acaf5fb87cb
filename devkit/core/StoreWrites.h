#pragma once

#include "devkit/core/StoreEntry.h"

#include <QString>

#include <deque>
#include <functional>
#include <mutex>
#include <vector>

class StoreAccess;

/// The value writes that reached the store in this run. One of each process.
class StoreWrites
{
public:
    struct Write
    {
        quint64 sequence; // counted from 1
        QString scope;
        QString key;
        bool byPlugIn;
    };

    /// One write of a value or of a constraint word, and what the key held from then on.
    struct Change
    {
        QString scope;
        QString key;
        StoreEntry entry;
        bool ofValue;
        OrbStrataWriter by;
    };
    using Observer = std::function<void(const Change& write)>;

    explicit StoreWrites(const StoreAccess& store);
    ~StoreWrites();
    StoreWrites(const StoreWrites&) = delete;
    StoreWrites& operator=(const StoreWrites&) = delete;

    /// In order; the oldest of very many are forgotten.
    std::vector<Write> Since(quint64 sequence) const;

    /// Told of every write from now on, in order, on any thread; null: nobody is.
    void SetObserver(Observer observer);

    /// Waits until all changes have been told to their listeners, and runs the event loop until it is idle, again and
    /// again while that leads to further writes. False: the time is over.
    static constexpr int kPatienceMs = 5000;
    bool Settle(int timeoutMs = kPatienceMs);

    /// While it lives, only Settle() has changes told, and none while the event loop runs: what the plug-in does about
    /// them comes in the same order every time. UI thread.
    class InStep
    {
    public:
        explicit InStep(StoreWrites& writes);
        ~InStep();
        InStep(const InStep&) = delete;
        InStep& operator=(const InStep&) = delete;

    private:
        StoreWrites& m_writes;
    };

private:
    quint64 Told() const;
    static void NL_SUITE_CALL OnWrite(void* context, const OrbStrataWrite* write);

    const StoreAccess& m_store;
    bool m_inStep = false;
    mutable std::mutex m_mutex; // guards what follows
    std::deque<Write> m_writes;
    quint64 m_count = 0; // of value writes
    quint64 m_told = 0;  // of constraint words, too
    Observer m_observer;
};
