#pragma once

#include "platform/KernelHandle.h"

#include <QString>
#include <QVariantList>

#include <map>
#include <optional>

/// Named system events that the host makes for the plug-in to signal. They live as long as this object.
class MadeEvents
{
public:
    MadeEvents() = default;
    ~MadeEvents();
    MadeEvents(const MadeEvents&) = delete;
    MadeEvents& operator=(const MadeEvents&) = delete;

    /// Makes an event, not signalled, in place of the one that this object made before. The reason when that fails,
    /// else empty.
    QString Create(const QString& name);

    /// Nothing: this object made no such event.
    std::optional<bool> IsSignalled(const QString& name) const;
    /// {"name", "signalled"} of each, by name.
    QVariantList List() const;

private:
    std::map<QString, Platform::KernelHandle> m_events;
};
