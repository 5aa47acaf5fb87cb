#pragma once

#include <QString>
#include <QVariant>

/// Copies that share nothing with the library that gave the value. A text from a literal lies in the library itself,
/// and a type that the library registered is handled by its code: both are gone once it is unloaded.
namespace DetachedCopy
{

QString Of(const QString& text);

/// Values of Qt's types and VariableIdentifier keep their type; of others the text remains, where they have one.
QVariant Of(const QVariant& value);

} // namespace DetachedCopy
