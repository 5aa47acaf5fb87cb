#include "devkit/core/VariableChange.h"

QVariantMap VariableChange::Describe() const
{
    return {{QStringLiteral("seq"), sequence},
            {QStringLiteral("name"), name},
            {QStringLiteral("kind"), kind == Kind::Set ? QStringLiteral("set") : QStringLiteral("trigger")},
            {QStringLiteral("by"), by == Actor::Page ? QStringLiteral("page") : QStringLiteral("plugin")},
            {QStringLiteral("value"), value}};
}
