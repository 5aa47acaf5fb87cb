#include "devkit/core/VariableJson.h"

QVariantMap VariableJson::Describe(const VariableChange& change)
{
    const bool isSet = change.kind == VariableChange::Kind::Set;
    return {{QStringLiteral("seq"), change.sequence},
            {QStringLiteral("name"), change.name},
            {QStringLiteral("kind"), isSet ? QStringLiteral("set") : QStringLiteral("trigger")},
            {QStringLiteral("by"), change.by == Actor::Page ? QStringLiteral("page") : QStringLiteral("plugin")},
            {QStringLiteral("value"), change.value}};
}

QVariantMap VariableJson::Describe(const VariableHub::View& view)
{
    const QVariant type = view.value.isValid() ? QVariant(QLatin1String(view.value.typeName())) : QVariant();
    return {{QStringLiteral("value"), view.value},
            {QStringLiteral("type"), type},
            {QStringLiteral("registered"), view.registered},
            {QStringLiteral("kept"), view.kept},
            {QStringLiteral("subscribers"), view.subscribers},
            {QStringLiteral("writes"), view.writes},
            {QStringLiteral("triggers"), view.triggers}};
}
