#pragma once

#include "tarn/IDataPeer.h"
#include "tarn/IPlugInManager.h"
#include "tarn/VariableIdentifier.h"

#include <QHash>
#include <QMetaMethod>
#include <QPointer>

#include <functional>
#include <string>
#include <vector>

/// A host that keeps values and fires triggers, and does no more: what the plug-in does is measured, not what a host
/// does with it. Notifies nobody of values.
class PageHost final : public IPlugInManager, public IDataPeer
{
public:
    /// The page's part.
    void Put(const VariableIdentifier& id, const QVariant& value) { m_values[id.ToString()] = value; }
    void Fire(const char* trigger)
    {
        const VariableIdentifier id(trigger);
        const auto subscribers = m_subscribers.value(id.ToString());
        for (const auto& [receiver, method] : subscribers)
        {
            method.invoke(receiver, Qt::DirectConnection,
                          method.parameterCount() == 0 ? QGenericArgument() : Q_ARG(VariableIdentifier, id));
        }
    }

    /// Runs what the plug-in asked to be run once the event loop is ready.
    void EventLoopIsReady()
    {
        for (const auto& [receiver, method] : m_whenReady)
            method.invoke(receiver, Qt::DirectConnection);
        m_whenReady.clear();
    }

    /// From now on called with what the plug-in writes; null ends it.
    void Observe(std::function<void(const VariableIdentifier&, const QVariant&)> onWrite)
    {
        m_onWrite = std::move(onWrite);
    }

    IDataPeer* GetDataPeer() override { return this; }
    void ReleaseDataPeer(IDataPeer*) override {}
    void InvokeWhenEventLoopReady(void*, QObject* receiver, const char* slot) override
    {
        m_whenReady.push_back({receiver, SlotOf(*receiver, slot)});
    }

    QVariant GetValue(const VariableIdentifier& id) override { return m_values.value(id.ToString()); }
    bool SetValue(const VariableIdentifier& id, const QVariant& value, int) override
    {
        Put(id, value);
        if (m_onWrite)
            m_onWrite(id, value);
        return true;
    }
    bool Trigger(const VariableIdentifier&, int) override { return true; }
    bool RegisterKept(const VariableIdentifier&) override { return true; }
    bool Subscribe(const VariableIdentifier& id, QObject* receiver, const char* slot) override
    {
        m_subscribers[id.ToString()].push_back({receiver, SlotOf(*receiver, slot)});
        return true;
    }
    bool Register(const VariableIdentifier&) override { return true; }

private:
    struct Subscriber
    {
        QPointer<QObject> receiver;
        QMetaMethod method;
    };

    /// Qt writes a slot as "1" and its signature.
    static QMetaMethod SlotOf(const QObject& receiver, const char* slot)
    {
        return receiver.metaObject()->method(receiver.metaObject()->indexOfMethod(slot + 1));
    }

    void Reserved1() override {}
    void Reserved2() override {}
    void Reserved3() override {}
    void Reserved4() override {}
    void Reserved5() override {}
    void Reserved6() override {}
    void Reserved7() override {}
    void Reserved8() override {}
    void Reserved9() override {}
    void Reserved10() override {}
    void Reserved12() override {}
    void Reserved13() override {}
    void Reserved14() override {}
    void Reserved15() override {}

    QHash<QString, QVariant> m_values;
    QHash<QString, std::vector<Subscriber>> m_subscribers;
    std::vector<Subscriber> m_whenReady;
    std::function<void(const VariableIdentifier&, const QVariant&)> m_onWrite;
};
