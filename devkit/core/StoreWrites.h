#pragma once

#include "suite/SuiteAbi.h"

#include <QString>

#include <deque>
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

    explicit StoreWrites(const StoreAccess& store);
    ~StoreWrites();
    StoreWrites(const StoreWrites&) = delete;
    StoreWrites& operator=(const StoreWrites&) = delete;

    /// In order; the oldest of very many are forgotten.
    std::vector<Write> Since(quint64 sequence) const;

    /// Waits until all changes have been told to their listeners, and runs the event loop until it is idle, again and
    /// again while that leads to further writes. False: the time is over.
    bool Settle(int timeoutMs) const;

private:
    quint64 Count() const;
    static void NL_SUITE_CALL OnWrite(void* context, const char* sid, const wchar_t* key, bool byPlugIn);

    const StoreAccess& m_store;
    mutable std::mutex m_mutex; // guards what follows
    std::deque<Write> m_writes;
    quint64 m_count = 0;
};
