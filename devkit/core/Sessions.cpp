#include "devkit/core/Sessions.h"

#include "devkit/core/Session.h"

#include <algorithm>

void Sessions::Add(const std::shared_ptr<Session>& session)
{
    m_sessions.push_back(session);
}

void Sessions::Remove(const Session* session)
{
    const auto found = std::find_if(m_sessions.begin(), m_sessions.end(),
                                    [session](const auto& known) { return known.get() == session; });
    if (found == m_sessions.end())
        return;
    m_sessions.erase(found);
    if (m_onRemoved)
        m_onRemoved();
}

bool Sessions::Watched(Topic topic, const QString& name) const
{
    return std::any_of(
        m_sessions.begin(), m_sessions.end(),
        [topic, &name](const auto& session) { return session->Watches(topic, name); });
}

bool Sessions::WatchedAny(Topic topic) const
{
    return std::any_of(
        m_sessions.begin(), m_sessions.end(), [topic](const auto& session) { return session->WatchesAny(topic); });
}

void Sessions::Publish(Topic topic, const QString& name, const QVariantMap& event) const
{
    const auto sessions = m_sessions; // a client may close its session, or another, while it receives
    for (const auto& session : sessions)
        if (session->Watches(topic, name))
            session->Send(event);
}

bool Sessions::TakeTurn()
{
    return !std::exchange(m_turnTaken, true);
}

void Sessions::HandTurnBack(const Session& from)
{
    m_turnTaken = false;
    const auto waits = [&from](const auto& session) { return session.get() != &from && session->Waiting() > 0; };
    if (std::none_of(m_sessions.begin(), m_sessions.end(), waits))
        return;
    const auto goOn = [this] {
        const auto sessions = m_sessions;
        for (const auto& session : sessions)
            session->Continue();
    };
    QMetaObject::invokeMethod(this, goOn, Qt::QueuedConnection);
}
