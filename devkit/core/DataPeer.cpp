#include "devkit/core/DataPeer.h"

#include "devkit/core/DetachedCopy.h"
#include "tarn/VariableIdentifier.h"

namespace
{

QString NameOf(const VariableIdentifier& id)
{
    return DetachedCopy::Of(id.ToString());
}

} // namespace

QVariant DataPeer::GetValue(const VariableIdentifier& id)
{
    return m_hub.Value(NameOf(id));
}

bool DataPeer::SetValue(const VariableIdentifier& id, const QVariant& value, int)
{
    m_hub.Set(NameOf(id), DetachedCopy::Of(value), Actor::PlugIn);
    return true;
}

bool DataPeer::Trigger(const VariableIdentifier& id, int)
{
    m_hub.Trigger(NameOf(id), {}, Actor::PlugIn);
    return true;
}

bool DataPeer::RegisterKept(const VariableIdentifier& id)
{
    m_hub.RegisterKept(NameOf(id), this);
    return true;
}

bool DataPeer::Subscribe(const VariableIdentifier& id, QObject* receiver, const char* slot)
{
    return m_hub.Subscribe(NameOf(id), this, receiver, slot);
}

bool DataPeer::Register(const VariableIdentifier& id)
{
    m_hub.Register(NameOf(id), this);
    return true;
}
