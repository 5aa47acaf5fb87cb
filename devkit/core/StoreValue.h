#pragma once

#include "devkit/core/Result.h"
#include "devkit/strata/OrbStrataControl.h"

#include <QByteArray>

/// Values between JSON and the store.
namespace StoreValue
{

/// A value as OrbStrataEntry takes it.
struct Stored
{
    OrbStrataType type = ORB_STRATA_TYPE_NONE;
    int64_t number = 0;
    QByteArray text;
};

/// `type` is one of the type names ("bool", "int32", "int64", "string", "utf8", "object"). A value of another kind or
/// out of the type's range is refused, never converted.
Result<Stored> Make(const QString& type, const QVariant& value);

/// {"found", "type", "value", "constraints"}; an entry without a value is one that was not found.
QVariantMap Describe(const OrbStrataEntry& entry);

} // namespace StoreValue
