#pragma once

#include "devkit/core/VariableChange.h"

#include <QVariantMap>

#include <deque>

/// What was done with the variables, as far back as memory allows: the newest changes, whose values together stay
/// within a limit. Sequence numbers go on.
class History
{
public:
    struct Limits
    {
        std::size_t changes = 100'000;
        qint64 bytes = 64LL * 1024 * 1024;
    };

    explicit History(Limits limits) : m_limits(limits) {}

    /// Gives the change its sequence number and keeps it.
    const VariableChange& Add(VariableChange change);
    const std::deque<VariableChange>& Changes() const { return m_changes; }

private:
    const Limits m_limits;
    std::deque<VariableChange> m_changes;
    std::deque<qint64> m_sizes;
    qint64 m_bytes = 0;
    quint64 m_last = 0;
};
