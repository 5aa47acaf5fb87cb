#include "tests/support/RecordingHost.h"

#include <gtest/gtest.h>

#include <QMetaObject>

class RecordingHost::Peer : public IDataPeer
{
public:
    explicit Peer(RecordingHost& host) : m_host(host) {}
    ~Peer() override
    {
        for (const auto& [id, uses] : m_uses)
            m_host.m_uses[m_handler][id].insert(uses.begin(), uses.end());
    }

    QVariant GetValue(const VariableIdentifier& id) override
    {
        Note("get", id);
        return m_host.m_values.value(id.ToString());
    }

    bool SetValue(const VariableIdentifier& id, const QVariant& value, int flags) override
    {
        EXPECT_EQ(0, flags);
        EXPECT_TRUE(m_host.m_declared.count(id.ToString()) || id.GetPackage() == QLatin1String("VDNSettings"))
            << id.ToString().toStdString() << " is written but neither registered nor subscribed";
        Note("set", id);
        m_host.m_values[id.ToString()] = value;
        m_host.Notify(id.ToString());
        return true;
    }

    bool Trigger(const VariableIdentifier& id, int flags) override
    {
        EXPECT_EQ(0, flags);
        Note("trigger", id);
        m_host.Notify(id.ToString());
        return true;
    }

    bool RegisterKept(const VariableIdentifier& id) override
    {
        Note("kept", id);
        m_host.m_declared.insert(id.ToString());
        return true;
    }

    bool Subscribe(const VariableIdentifier& id, QObject* receiver, const char* slot) override
    {
        Note("subscribe", id, std::string(" ") + slot);
        m_host.m_declared.insert(id.ToString());
        m_host.m_subscriptions.push_back({this, id.ToString(), receiver, slot});
        m_handler = receiver->metaObject()->className();
        return true;
    }

    bool Register(const VariableIdentifier& id) override
    {
        Note("register", id);
        m_host.m_declared.insert(id.ToString());
        return true;
    }

private:
    void Reserved1() override {}
    void Reserved2() override {}
    void Reserved6() override {}
    void Reserved8() override {}
    void Reserved9() override {}
    void Reserved10() override {}
    void Reserved12() override {}
    void Reserved13() override {}
    void Reserved14() override {}
    void Reserved15() override {}

    void Note(const char* kind, const VariableIdentifier& id, const std::string& more = {})
    {
        m_host.m_record.emplace_back(kind, id.GetName().toStdString() + more);
        m_uses[id.ToString()].insert(kind);
    }

    RecordingHost& m_host;
    std::string m_handler; // known once it subscribes
    VariableUses m_uses;
};

void RecordingHost::PageSets(const char* id, const QVariant& value)
{
    m_values[QLatin1String(id)] = value;
    Notify(QLatin1String(id));
}

void RecordingHost::PageFires(const char* id)
{
    Notify(QLatin1String(id));
}

RecordingHost::Record RecordingHost::Take(const std::string& kind)
{
    Record taken;
    for (const auto& [what, text] : m_record)
        if (what == kind)
            taken.push_back(text);
    Forget();
    return taken;
}

RecordingHost::Record RecordingHost::TakeChanges()
{
    Record taken;
    for (const auto& [what, text] : m_record)
        if (what != "get")
            taken.push_back(what + ' ' + text);
    Forget();
    return taken;
}

IDataPeer* RecordingHost::GetDataPeer()
{
    if (m_peersLeft == 0)
        return nullptr;
    --m_peersLeft;
    ++m_peersOut;
    ++m_peersGiven;
    return new Peer(*this);
}

void RecordingHost::ReleaseDataPeer(IDataPeer* peer)
{
    --m_peersOut;
    for (Subscription& subscription : m_subscriptions)
        if (subscription.peer == peer)
            subscription.receiver = nullptr;
    delete peer;
}

void RecordingHost::InvokeWhenEventLoopReady(void* reserved, QObject* receiver, const char* slot)
{
    EXPECT_EQ(nullptr, reserved);
    EXPECT_NE(nullptr, receiver);
    m_eventLoopSlots.emplace_back(slot);
}

void RecordingHost::Notify(const QString& id)
{
    m_notifications.push_back(id);
    if (m_notifying)
        return;
    m_notifying = true;
    for (; !m_notifications.empty(); m_notifications.pop_front())
    {
        const QString notified = m_notifications.front();
        for (std::size_t i = 0; i < m_subscriptions.size(); ++i)
        {
            const Subscription subscription = m_subscriptions[i];
            if (subscription.id != notified || !subscription.receiver)
                continue;
            const std::string method = subscription.slot.substr(1, subscription.slot.find('(') - 1);
            const bool takesId = subscription.slot.find("()") == std::string::npos;
            const VariableIdentifier identifier(notified);
            EXPECT_TRUE(QMetaObject::invokeMethod(subscription.receiver, method.c_str(), Qt::DirectConnection,
                                                  takesId ? Q_ARG(VariableIdentifier, identifier) : QGenericArgument()))
                << subscription.slot;
        }
    }
    m_notifying = false;
}
