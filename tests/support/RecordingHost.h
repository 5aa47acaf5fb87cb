#pragma once

#include "tarn/IDataPeer.h"
#include "tarn/IPlugInManager.h"
#include "tarn/VariableIdentifier.h"

#include <QObject>
#include <QPointer>

#include <deque>
#include <functional>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

/// A host in the test's hands: keeps the values, records what a handler does in order, and plays the page.
class RecordingHost : public IPlugInManager
{
public:
    /// Of "set NAME", "trigger NAME", "register NAME", "kept NAME", "subscribe NAME SLOT": names without the package.
    using Record = std::vector<std::string>;

    /// The page writes a variable or fires a trigger; subscribers are notified.
    void PageSets(const char* id, const QVariant& value);
    void PageFires(const char* id);

    QVariant Value(const char* id) const { return m_values.value(QLatin1String(id)); }
    const QMap<QString, QVariant>& Values() const { return m_values; }
    std::string Text(const char* id) const { return Value(id).toString().toStdString(); }

    /// What was done since the last call, only entries that begin with `kind` ("set", "trigger", ...).
    Record Take(const std::string& kind);

    /// The same of everything but reading, each with its kind.
    Record TakeChanges();
    void Forget() { m_record.clear(); }

    /// What was done with each variable: "set", "get", "trigger", "register", "kept", "subscribe".
    using VariableUses = std::map<QString, std::set<std::string>>;

    /// By the class of the handler that did it; known when it has handed its data peer back.
    const std::map<std::string, VariableUses>& UsesByHandler() const { return m_uses; }

    /// After so many data peers more there are none to give.
    void LimitPeers(int left) { m_peersLeft = left; }
    int PeersOut() const { return m_peersOut; }
    int PeersGiven() const { return m_peersGiven; }
    std::vector<std::string> EventLoopSlots() const { return m_eventLoopSlots; }

    IDataPeer* GetDataPeer() override;
    void ReleaseDataPeer(IDataPeer* peer) override;
    void InvokeWhenEventLoopReady(void* reserved, QObject* receiver, const char* slot) override;

private:
    class Peer;
    struct Subscription
    {
        const Peer* peer;
        QString id;
        QPointer<QObject> receiver;
        std::string slot;
    };

    void Reserved3() override {}
    void Reserved4() override {}
    void Reserved5() override {}
    void Reserved6() override {}
    void Reserved7() override {}
    void Reserved8() override {}
    void Reserved9() override {}

    void Notify(const QString& id);

    QMap<QString, QVariant> m_values;
    std::set<QString> m_declared;
    std::deque<QString> m_notifications;
    bool m_notifying = false;
    std::vector<Subscription> m_subscriptions;
    std::vector<std::pair<std::string, std::string>> m_record;
    std::map<std::string, VariableUses> m_uses;
    std::vector<std::string> m_eventLoopSlots;
    int m_peersLeft = std::numeric_limits<int>::max();
    int m_peersOut = 0;
    int m_peersGiven = 0;
};
