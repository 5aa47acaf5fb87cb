#pragma once

#include "devkit/core/VariableHub.h"
#include "tarn/IDataPeer.h"

/// One plug-in party's access to the variables; its declarations and subscriptions end with it.
class DataPeer : public IDataPeer
{
public:
    explicit DataPeer(VariableHub& hub) : m_hub(hub) {}
    ~DataPeer() override { m_hub.Release(this); }
    DataPeer(const DataPeer&) = delete;
    DataPeer& operator=(const DataPeer&) = delete;

    QVariant GetValue(const VariableIdentifier& id) override;
    bool SetValue(const VariableIdentifier& id, const QVariant& value, int flags) override;
    bool Trigger(const VariableIdentifier& id, int flags) override;
    bool RegisterKept(const VariableIdentifier& id) override;
    bool Subscribe(const VariableIdentifier& id, QObject* receiver, const char* slot) override;
    bool Register(const VariableIdentifier& id) override;

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

private:
    VariableHub& m_hub;
};
