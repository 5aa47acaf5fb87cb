#pragma once

#include "devkit/core/DataPeer.h"
#include "tarn/IPlugInManager.h"

#include <memory>
#include <utility>
#include <vector>

/// The host as the plug-in sees it.
class PlugInManager : public IPlugInManager
{
public:
    PlugInManager(VariableHub& hub, VariableHub::Warn warn) : m_hub(hub), m_warn(std::move(warn)) {}

    IDataPeer* GetDataPeer() override;
    void ReleaseDataPeer(IDataPeer* peer) override;
    void InvokeWhenEventLoopReady(void* reserved, QObject* receiver, const char* slot) override;

    /// Takes back the peers that the plug-in, gone by now, never returned. Their number.
    std::size_t ReclaimPeers();
    std::size_t PeersOut() const { return m_peers.size(); }

    void Reserved3() override {}
    void Reserved4() override {}
    void Reserved5() override {}
    void Reserved6() override {}
    void Reserved7() override {}
    void Reserved8() override {}
    void Reserved9() override {}

protected:
    IDataPeer* Give(std::unique_ptr<DataPeer> peer);

private:
    VariableHub& m_hub;
    VariableHub::Warn m_warn;
    std::vector<std::unique_ptr<DataPeer>> m_peers;
};
