#pragma once

#include <QString>

#include <map>
#include <memory>
#include <optional>

/// Named system events that the host makes for the plug-in to signal. They live as long as this object.
///
/// POSIX has no such events: there, an event is a file in the folder that the environment variable VERIDAN_EVENT_DIR
/// names, called by the event's name in percent-encoding. It exists as long as the event does and holds "1" once the
/// event is signalled, else "0".
class NamedEvents
{
public:
    /// `folder` holds the files where there are no system events.
    explicit NamedEvents(const QString& folder);
    ~NamedEvents();
    NamedEvents(const NamedEvents&) = delete;
    NamedEvents& operator=(const NamedEvents&) = delete;

    /// Makes an event, not signalled, or resets the one that this object made before. The reason when that fails, else
    /// empty.
    QString Create(const QString& name);

    /// Nothing: this object made no such event.
    std::optional<bool> IsSignalled(const QString& name) const;

private:
    class Event;

    const QString m_folder;
    std::map<QString, std::unique_ptr<Event>> m_events;
};
