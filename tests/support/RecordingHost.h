#pragma once

#include "devkit/core/PlugInManager.h"
#include "tarn/VariableIdentifier.h"

#include <QMap>

#include <limits>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

/// What a recording host is made on.
class RecordedHub
{
protected:
    RecordedHub();

    VariableHub::Warn m_complain;
    VariableHub m_variables;
};

/// The development host's variables in the test's hands: records what a handler does in order, and plays the page.
class RecordingHost : private RecordedHub, public PlugInManager
{
public:
    RecordingHost() : PlugInManager(m_variables, m_complain) {}
    ~RecordingHost() override;

    /// Of "set NAME", "trigger NAME", "register NAME", "kept NAME", "subscribe NAME SLOT": names without the package.
    using Record = std::vector<std::string>;

    /// The page writes a variable or fires a trigger; subscribers are notified.
    void PageSets(const char* id, const QVariant& value) { m_variables.Set(QLatin1String(id), value, Actor::Page); }
    void PageFires(const char* id) { m_variables.Trigger(QLatin1String(id), {}, Actor::Page); }

    QVariant Value(const char* id) const { return m_variables.Value(QLatin1String(id)); }
    /// Of every variable that was written.
    QMap<QString, QVariant> Values() const;
    std::string String(const char* id) const { return Value(id).toString().toStdString(); }

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
    void LimitPeers(std::size_t left) { m_peersLeft = left; }

    /// What waits for the event loop; the test runs it.
    std::vector<std::string> EventLoopSlots() const { return m_eventLoopSlots; }

    IDataPeer* GetDataPeer() override;
    void InvokeWhenEventLoopReady(void* reserved, QObject* receiver, const char* slot) override;

private:
    class Peer;

    std::vector<std::pair<std::string, std::string>> m_record;
    std::map<std::string, VariableUses> m_uses;
    std::vector<std::string> m_eventLoopSlots;
    std::size_t m_peersLeft = std::numeric_limits<std::size_t>::max();
};
