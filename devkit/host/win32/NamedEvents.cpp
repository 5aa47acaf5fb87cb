#include "devkit/host/NamedEvents.h"

#include <windows.h>

class NamedEvents::Event
{
public:
    explicit Event(const QString& name) : m_handle(CreateEventW(nullptr, TRUE, FALSE, name.toStdWString().c_str())) {}
    ~Event() { CloseHandle(m_handle); }
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;

    bool Reset() { return ResetEvent(m_handle) != FALSE; }
    bool IsSignalled() { return WaitForSingleObject(m_handle, 0) == WAIT_OBJECT_0; }

private:
    const HANDLE m_handle;
};

NamedEvents::NamedEvents(const QString& folder) : m_folder(folder) {}

NamedEvents::~NamedEvents() = default;

QString NamedEvents::Create(const QString& name)
{
    auto& event = m_events[name];
    if (event == nullptr)
    {
        event = std::make_unique<Event>(name);
    }
    if (!event->Reset())
    {
        m_events.erase(name);
        return QStringLiteral("The event \"%1\" could not be made.").arg(name);
    }
    return {};
}

std::optional<bool> NamedEvents::IsSignalled(const QString& name) const
{
    const auto found = m_events.find(name);
    return found == m_events.end() ? std::nullopt : std::optional(found->second->IsSignalled());
}
