#pragma once

#include "tarn/IDataPeer.h"
#include "tarn/IPlugInManager.h"
#include "tarn/VariableIdentifier.h"

#include <QHash>

/// A host that only keeps values: what a handler does is measured, not what a host does with it.
class PageHost final : public IPlugInManager, public IDataPeer
{
public:
    void Write(const VariableIdentifier& id, const QVariant& value) { m_values[id.ToString()] = value; }

    IDataPeer* GetDataPeer() override { return this; }
    void ReleaseDataPeer(IDataPeer*) override {}
    void InvokeWhenEventLoopReady(void*, QObject*, const char*) override {}

    QVariant GetValue(const VariableIdentifier& id) override { return m_values.value(id.ToString()); }
    bool SetValue(const VariableIdentifier& id, const QVariant& value, int) override
    {
        Write(id, value);
        return true;
    }
    bool Trigger(const VariableIdentifier&, int) override { return true; }
    bool RegisterKept(const VariableIdentifier&) override { return true; }
    bool Subscribe(const VariableIdentifier&, QObject*, const char*) override { return true; }
    bool Register(const VariableIdentifier&) override { return true; }

private:
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
};
