#pragma once

#include "devkit/core/Topic.h"

#include <QObject>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

class Session;

/// The sessions of the clients that are connected, and the one turn that their commands share. UI thread.
class Sessions : public QObject
{
    Q_OBJECT
public:
    void Add(const std::shared_ptr<Session>& session);
    void Remove(const Session* session);
    /// Called when one is gone, and with it what it watched.
    void SetOnRemoved(std::function<void()> onRemoved) { m_onRemoved = std::move(onRemoved); }

    bool Watched(Topic topic, const QString& name) const;
    bool WatchedAny(Topic topic) const;
    /// Hands an event to everybody who watches the topic and the name: the variable, the key; else empty.
    void Publish(Topic topic, const QString& name, const QVariantMap& event) const;

    /// False: another command runs.
    bool TakeTurn();
    bool IsTurnFree() const { return !m_turnTaken; }
    /// The others go on, through the event loop.
    void HandTurnBack(const Session& from);

private:
    std::vector<std::shared_ptr<Session>> m_sessions;
    bool m_turnTaken = false;
    std::function<void()> m_onRemoved;
};
