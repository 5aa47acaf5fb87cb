#include "devkit/core/StoreWrites.h"

#include "devkit/core/EventLoop.h"
#include "devkit/core/StoreAccess.h"
#include "devkit/strata/OrbStrataControl.h"

#include <QElapsedTimer>

#include <algorithm>

StoreWrites::StoreWrites(const StoreAccess& store) : m_store(store)
{
    OrbStrataControl_SetWriteObserver(&StoreWrites::OnWrite, this);
}

StoreWrites::~StoreWrites()
{
    OrbStrataControl_SetWriteObserver(nullptr, nullptr);
}

std::vector<StoreWrites::Write> StoreWrites::Since(quint64 sequence) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto first = std::find_if(m_writes.begin(), m_writes.end(),
                                    [sequence](const Write& write) { return write.sequence > sequence; });
    return {first, m_writes.end()};
}

bool StoreWrites::Settle(int timeoutMs) const
{
    constexpr qint64 kSliceMs = 20; // between which the event loop runs, for other clients too
    QElapsedTimer timer;
    timer.start();
    for (;;)
    {
        const quint64 known = Count();
        const qint64 left = timeoutMs - timer.elapsed();
        if (left < 0)
            return false;
        const bool delivered = OrbStrataControl_WaitForDelivery(static_cast<uint32_t>(std::min(left, kSliceMs)));
        RunUntilIdle();
        if (delivered && Count() == known)
            return true;
    }
}

quint64 StoreWrites::Count() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_count;
}

void NL_SUITE_CALL StoreWrites::OnWrite(void* context, const char* sid, const wchar_t* key, bool byPlugIn)
{
    constexpr std::size_t kMost = 100'000;
    auto* const self = static_cast<StoreWrites*>(context);
    const std::lock_guard<std::mutex> lock(self->m_mutex);
    self->m_writes.push_back(
        {++self->m_count, self->m_store.ScopeOf(QString::fromUtf8(sid)), QString::fromWCharArray(key), byPlugIn});
    if (self->m_writes.size() > kMost)
        self->m_writes.pop_front();
}
