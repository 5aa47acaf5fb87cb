#include "tests/support/RecordingHost.h"

#include <gtest/gtest.h>

RecordedHub::RecordedHub()
    : m_complain([](const QString& sentence) {
          // Tests write values of other types, too; and the page that asks for the result of a save declares it.
          EXPECT_TRUE(sentence.contains(" held a value ") || sentence.contains("@VDNSettings:"))
              << sentence.toStdString();
      }),
      m_variables(m_complain)
{}

class RecordingHost::Peer : public DataPeer
{
public:
    explicit Peer(RecordingHost& host) : DataPeer(host.m_variables), m_host(host) {}
    ~Peer() override
    {
        for (const auto& [id, uses] : m_uses)
            m_host.m_uses[m_handler][id].insert(uses.begin(), uses.end());
    }

    QVariant GetValue(const VariableIdentifier& id) override
    {
        Note("get", id);
        return DataPeer::GetValue(id);
    }

    bool SetValue(const VariableIdentifier& id, const QVariant& value, int flags) override
    {
        EXPECT_EQ(0, flags);
        Note("set", id);
        return DataPeer::SetValue(id, value, flags);
    }

    bool Trigger(const VariableIdentifier& id, int flags) override
    {
        EXPECT_EQ(0, flags);
        Note("trigger", id);
        return DataPeer::Trigger(id, flags);
    }

    bool RegisterKept(const VariableIdentifier& id) override
    {
        Note("kept", id);
        return DataPeer::RegisterKept(id);
    }

    bool Subscribe(const VariableIdentifier& id, QObject* receiver, const char* slot) override
    {
        Note("subscribe", id, std::string(" ") + slot);
        m_handler = receiver->metaObject()->className();
        return DataPeer::Subscribe(id, receiver, slot);
    }

    bool Register(const VariableIdentifier& id) override
    {
        Note("register", id);
        return DataPeer::Register(id);
    }

private:
    void Note(const char* kind, const VariableIdentifier& id, const std::string& more = {})
    {
        m_host.m_record.emplace_back(kind, id.GetName().toStdString() + more);
        m_uses[id.ToString()].insert(kind);
    }

    RecordingHost& m_host;
    std::string m_handler; // known once it subscribes
    VariableUses m_uses;
};

RecordingHost::~RecordingHost()
{
    ReclaimPeers();
}

QMap<QString, QVariant> RecordingHost::Values() const
{
    QMap<QString, QVariant> values;
    for (const auto& [name, variable] : m_variables.Variables({}))
        if (variable.writes != 0)
            values.insert(name, variable.value);
    return values;
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
    return Give(std::make_unique<Peer>(*this));
}

void RecordingHost::InvokeWhenEventLoopReady(void* reserved, QObject* receiver, const char* slot)
{
    EXPECT_EQ(nullptr, reserved);
    EXPECT_NE(nullptr, receiver);
    m_eventLoopSlots.emplace_back(slot);
}
