#pragma once

#include "devkit/core/PlugInManager.h"
#include "tarn/VariableIdentifier.h"

#include <QCoreApplication>

#include <functional>
#include <memory>

/// What a page host is made on.
class PageHub
{
protected:
    VariableHub m_variables{[](const QString&) {}, {1, 0}}; // whose history holds nothing for long
};

/// The development host's variables, and the page that uses them. Keeps what the plug-in writes without a copy: what
/// the plug-in does is measured, not what a host does with it.
class PageHost : private PageHub, public PlugInManager
{
public:
    PageHost() : PlugInManager(m_variables, [](const QString&) {}) {}

    void Put(const VariableIdentifier& id, const QVariant& value)
    {
        m_variables.Set(id.ToString(), value, Actor::Page);
    }
    void Fire(const char* trigger) { m_variables.Trigger(QLatin1String(trigger), {}, Actor::Page); }
    /// As a plug-in does.
    void Write(const VariableIdentifier& id, const QVariant& value)
    {
        m_variables.Set(id.ToString(), value, Actor::PlugIn);
    }
    QVariant Value(const VariableIdentifier& id) const { return m_variables.Value(id.ToString()); }

    /// Runs what the plug-in asked to be run once the event loop is ready.
    static void EventLoopIsReady() { QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall); }

    /// From now on called with what the plug-in writes; null ends it.
    void Observe(const std::function<void(const QString& id, const QVariant& value)>& onWrite)
    {
        m_variables.SetObserver([onWrite](const VariableChange& change) {
            if (onWrite && change.by == Actor::PlugIn && change.kind == VariableChange::Kind::Set)
                onWrite(change.name, change.value);
        });
    }

    IDataPeer* GetDataPeer() override { return Give(std::make_unique<Peer>(*this)); }

private:
    class Peer final : public DataPeer
    {
    public:
        explicit Peer(PageHost& host) : DataPeer(host.m_variables), m_host(host) {}
        bool SetValue(const VariableIdentifier& id, const QVariant& value, int) override
        {
            m_host.Write(id, value);
            return true;
        }

    private:
        PageHost& m_host;
    };
};
