#include "devkit/core/History.h"

#include <QStringList>

#include <utility>

namespace
{

qint64 SizeOf(const QVariant& value);

template <class Container>
qint64 SizeOfAll(const Container& values)
{
    qint64 size = 0;
    for (const QVariant& value : values)
        size += SizeOf(value);
    return size;
}

/// The memory of a value, roughly.
qint64 SizeOf(const QVariant& value)
{
    constexpr qint64 kOverhead = 64;
    const auto sizeOf = [](const QString& string) { return string.size() * qint64{2}; };
    switch (static_cast<QMetaType::Type>(value.userType()))
    {
    case QMetaType::QString:
        return kOverhead + sizeOf(value.toString());
    case QMetaType::QByteArray:
        return kOverhead + value.toByteArray().size();
    case QMetaType::QVariantMap: {
        const QVariantMap map = value.toMap();
        qint64 names = 0;
        for (auto it = map.keyBegin(); it != map.keyEnd(); ++it)
            names += kOverhead + sizeOf(*it);
        return kOverhead + names + SizeOfAll(map);
    }
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return kOverhead + SizeOfAll(value.toList());
    default:
        return kOverhead;
    }
}

} // namespace

const VariableChange& History::Add(VariableChange change)
{
    change.sequence = ++m_last;
    m_sizes.push_back(SizeOf(change.value) + SizeOf(change.name));
    m_bytes += m_sizes.back();
    m_changes.push_back(std::move(change));
    while (m_changes.size() > 1 && (m_changes.size() > m_limits.changes || m_bytes > m_limits.bytes))
    {
        m_bytes -= m_sizes.front();
        m_sizes.pop_front();
        m_changes.pop_front();
    }
    return m_changes.back();
}
