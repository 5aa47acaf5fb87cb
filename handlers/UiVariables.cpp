#include "handlers/UiVariables.h"

bool UiVariables::Obtain(const FunctionLog& log, IPlugInManager* manager)
{
    m_dataPeer.reset();
    if (IDataPeer* const peer = manager->GetDataPeer())
        m_dataPeer = std::shared_ptr<IDataPeer>(
            peer, std::bind(&IPlugInManager::ReleaseDataPeer, manager, std::placeholders::_1));
    else
        LOG(log, 2, L"%s: The host gives no data peer");
    return m_dataPeer != nullptr;
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
