#pragma once

#include "logging/FunctionLog.h"
#include "tarn/IDataPeer.h"
#include "tarn/IPlugInManager.h"
#include "tarn/VariableIdentifier.h"

#include <memory>

/// What the handlers share. UI thread only.

/// A data peer of the manager's, which goes back to it with the last holder.
std::shared_ptr<IDataPeer> ObtainDataPeer(IPlugInManager* manager);

/// Records a metric event of this component. A failure is logged under the caller's name and otherwise ignored.
void RecordMetricsEvent(const FunctionLog& log, const char* name);

/// An identifier's text as log formats take it.
inline std::wstring LogText(const VariableIdentifier& id)
{
    return id.ToString().toStdWString();
}
