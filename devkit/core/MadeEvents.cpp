#include "devkit/core/MadeEvents.h"

#include "platform/LastError.h"
#include "platform/NamedEvents.h"

MadeEvents::~MadeEvents()
{
    for (const auto& [name, event] : m_events)
        Platform::Close(event);
}

QString MadeEvents::Create(const QString& name)
{
    if (const auto earlier = m_events.find(name); earlier != m_events.end())
    {
        Platform::Close(earlier->second);
        m_events.erase(earlier);
    }
    const Platform::KernelHandle event = Platform::Get<Platform::NamedEvents>().Create(name.toStdWString().c_str());
    if (!event)
        return QStringLiteral("The event \"%1\" cannot be made: error %2.").arg(name).arg(Platform::LastError());
    m_events.emplace(name, event);
    return {};
}

std::optional<bool> MadeEvents::IsSignalled(const QString& name) const
{
    const auto event = m_events.find(name);
    if (event == m_events.end())
        return std::nullopt;
    return Platform::Get<Platform::NamedEvents>().IsSet(event->second);
}

QVariantList MadeEvents::List() const
{
    QVariantList rows;
    for (const auto& [name, event] : m_events)
        rows.append(QVariantMap{{QStringLiteral("name"), name},
                                {QStringLiteral("signalled"), Platform::Get<Platform::NamedEvents>().IsSet(event)}});
    return rows;
}
