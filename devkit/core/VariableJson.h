#pragma once

#include "devkit/core/VariableHub.h"

/// How variables look in the protocol.
namespace VariableJson
{

/// {"seq", "name", "kind", "by", "value"}
QVariantMap Describe(const VariableChange& change);

/// {"value", "type", "registered", "kept", "subscribers", "writes", "triggers"}; the type is Qt's name of it, null
/// where there is no value.
QVariantMap Describe(const VariableHub::View& view);

} // namespace VariableJson
