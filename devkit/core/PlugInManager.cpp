#include "devkit/core/PlugInManager.h"

#include <algorithm>

IDataPeer* PlugInManager::GetDataPeer()
{
    return Give(std::make_unique<DataPeer>(m_hub));
}

IDataPeer* PlugInManager::Give(std::unique_ptr<DataPeer> peer)
{
    m_peers.push_back(std::move(peer));
    return m_peers.back().get();
}

void PlugInManager::ReleaseDataPeer(IDataPeer* peer)
{
    const auto found =
        std::find_if(m_peers.begin(), m_peers.end(), [peer](const auto& known) { return known.get() == peer; });
    if (found == m_peers.end())
    {
        m_warn(QStringLiteral("The plug-in handed back a data peer that it does not hold."));
        return;
    }
    m_peers.erase(found);
}

void PlugInManager::InvokeWhenEventLoopReady(void*, QObject* receiver, const char* slot)
{
    const QMetaMethod method = receiver ? FindSlot(*receiver, slot) : QMetaMethod();
    if (!method.isValid() || method.parameterCount() != 0)
    {
        m_warn(QStringLiteral("The plug-in asks for a slot that it does not have: %1").arg(QString::fromUtf8(slot)));
        return;
    }
    method.invoke(receiver, Qt::QueuedConnection);
}

std::size_t PlugInManager::ReclaimPeers()
{
    const std::size_t outstanding = m_peers.size();
    m_peers.clear();
    if (outstanding > 0)
        m_warn(QStringLiteral("The plug-in left without handing back %1 data peer(s).").arg(outstanding));
    return outstanding;
}
