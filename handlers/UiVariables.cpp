#include "handlers/UiVariables.h"

void UiVariables::Obtain(IPlugInManager* manager)
{
    m_dataPeer = std::shared_ptr<IDataPeer>(
        manager->GetDataPeer(), std::bind(&IPlugInManager::ReleaseDataPeer, manager, std::placeholders::_1));
}

void UiVariables::Register(Ids ids)
{
    for (const VariableIdentifier& id : ids)
        Register(id);
}

void UiVariables::RegisterKept(Ids ids)
{
    for (const VariableIdentifier& id : ids)
        m_dataPeer->RegisterKept(id);
}

void UiVariables::Subscribe(Ids ids, const char* slot)
{
    for (const VariableIdentifier& id : ids)
        m_dataPeer->Subscribe(id, &m_handler, slot);
}
