#include "devkit/core/StoreWrites.h"

#include "devkit/core/EventLoop.h"
#include "devkit/core/StoreAccess.h"
#include "devkit/strata/OrbStrataControl.h"

#include <QElapsedTimer>

#include <algorithm>
#include <utility>

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

bool StoreWrites::Settle(int timeoutMs)
{
    // Between slices the event loop runs, for other clients too; in step only after all is told.
    const qint64 sliceMs = m_inStep ? 1000 : 20;
    QElapsedTimer timer;
    timer.start();
    for (;;)
    {
        const quint64 known = Told();
        const qint64 left = timeoutMs - timer.elapsed();
        if (left < 0)
            return false;
        OrbStrataControl_HoldDelivery(false);
        const bool delivered = OrbStrataControl_WaitForDelivery(static_cast<uint32_t>(std::min(left, sliceMs)));
        OrbStrataControl_HoldDelivery(m_inStep);
        RunUntilIdle();
        if (delivered && Told() == known)
            return true;
    }
}

quint64 StoreWrites::Told() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_told;
}

StoreWrites::InStep::InStep(StoreWrites& writes) : m_writes(writes)
{
    m_writes.m_inStep = true;
    OrbStrataControl_HoldDelivery(true);
}

StoreWrites::InStep::~InStep()
{
    m_writes.m_inStep = false;
    OrbStrataControl_HoldDelivery(false);
}

void StoreWrites::SetObserver(Observer observer)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_observer = std::move(observer);
}

void NL_SUITE_CALL StoreWrites::OnWrite(void* context, const OrbStrataWrite* write)
{
    constexpr std::size_t kMost = 100'000;
    auto* const self = static_cast<StoreWrites*>(context);
    const QString scope = self->m_store.ScopeOf(QString::fromUtf8(write->sid));
    const QString key = QString::fromWCharArray(write->entry->key);
    const std::lock_guard<std::mutex> lock(self->m_mutex);
    ++self->m_told;
    if (write->ofValue)
        self->m_writes.push_back({++self->m_count, scope, key, write->by <= ORB_STRATA_BY_BACKGROUND});
    if (self->m_writes.size() > kMost)
        self->m_writes.pop_front();
    if (self->m_observer)
        self->m_observer({scope, key, StoreEntry::FromC(*write->entry), write->ofValue, write->by});
}
