#pragma once

class IDataPeer;
class QObject;

/// The host as a plug-in sees it. UI thread only. The slots that this plug-in does not use are reserved, so that the
/// numbering is the host's.
class IPlugInManager
{
public:
    virtual ~IPlugInManager() = default; // slot 0

    /// A new data peer, never null. It belongs to the manager; the caller hands it back with ReleaseDataPeer().
    virtual IDataPeer* GetDataPeer() = 0; // slot 1

    /// Hands a peer back, exactly once for each GetDataPeer(). Its subscriptions end.
    virtual void ReleaseDataPeer(IDataPeer* peer) = 0; // slot 2

    virtual void Reserved3() = 0;
    virtual void Reserved4() = 0;
    virtual void Reserved5() = 0;
    virtual void Reserved6() = 0;
    virtual void Reserved7() = 0;
    virtual void Reserved8() = 0;
    virtual void Reserved9() = 0;

    /// Invokes a slot of `receiver` once the host's event loop runs. `slot` is Qt's slot string ("1OnReady()");
    /// `reserved` is null. A receiver that dies first is not called.
    virtual void InvokeWhenEventLoopReady(void* reserved, QObject* receiver, const char* slot) = 0; // slot 10
};
