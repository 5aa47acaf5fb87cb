#include "devkit/host/DataPeer.h"

#include "tarn/VariableIdentifier.h"

QVariant DataPeer::GetValue(const VariableIdentifier& id)
{
    return m_hub.Value(id.ToString());
}

bool DataPeer::SetValue(const VariableIdentifier& id, const QVariant& value, int)
{
    m_hub.Set(id.ToString(), value, Actor::PlugIn);
    return true;
}

bool DataPeer::Trigger(const VariableIdentifier& id, int)
{
    m_hub.Trigger(id.ToString(), {}, Actor::PlugIn);
    return true;
}

bool DataPeer::RegisterKept(const VariableIdentifier& id)
{
    m_hub.RegisterKept(id.ToString(), this);
    return true;
}

bool DataPeer::Subscribe(const VariableIdentifier& id, QObject* receiver, const char* slot)
{
    return m_hub.Subscribe(id.ToString(), this, receiver, slot);
}

bool DataPeer::Register(const VariableIdentifier& id)
{
    m_hub.Register(id.ToString(), this);
    return true;
}
