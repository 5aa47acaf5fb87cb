#include "devkit/host/NamedEvents.h"

#include <QDir>
#include <QFile>
#include <QUrl>

class NamedEvents::Event
{
public:
    explicit Event(const QString& path) : m_file(path) {}
    ~Event() { m_file.remove(); }
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;

    bool Reset()
    {
        const bool written = m_file.open(QIODevice::WriteOnly | QIODevice::Truncate) && m_file.write("0") == 1;
        m_file.close();
        return written;
    }

    bool IsSignalled()
    {
        const bool signalled = m_file.open(QIODevice::ReadOnly) && m_file.read(1) == "1";
        m_file.close();
        return signalled;
    }

private:
    QFile m_file;
};

NamedEvents::NamedEvents(const QString& folder) : m_folder(folder)
{
    QDir().mkpath(folder);
    qputenv("VERIDAN_EVENT_DIR", QFile::encodeName(folder));
}

NamedEvents::~NamedEvents() = default;

QString NamedEvents::Create(const QString& name)
{
    auto& event = m_events[name];
    if (event == nullptr)
    {
        const QString file = QString::fromLatin1(QUrl::toPercentEncoding(name));
        event = std::make_unique<Event>(m_folder + QLatin1Char('/') + file);
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
