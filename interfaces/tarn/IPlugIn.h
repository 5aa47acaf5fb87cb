#pragma once

#include <QtPlugin>

class IPlugInManager;

/// What the host loads. The host creates the object through Qt's plug-in exports, casts it to this interface by its
/// id, calls Initialize() once and deletes the object before it unloads the library. UI thread only.
class IPlugIn
{
public:
    virtual ~IPlugIn() = default; // slot 0

    /// The whole start-up. `manager` outlives the plug-in object. False: the plug-in cannot be used; the host deletes
    /// it and does not try again.
    virtual bool Initialize(IPlugInManager* manager) = 0; // slot 1
};

Q_DECLARE_INTERFACE(IPlugIn, "com.norlane.Tarn.IPlugIn/1.0")
