#pragma once

#include <QString>
#include <QVariant>

/// Values as a person reads and types them.
namespace ValueText
{

/// A text as it is, anything else as JSON; cut where it is long.
QString Short(const QVariant& value);

/// JSON where the text is JSON, else the text itself.
QVariant FromTyped(const QString& text);

} // namespace ValueText
