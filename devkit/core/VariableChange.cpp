#include "devkit/core/VariableChange.h"

QString NameOf(Actor actor)
{
    return actor == Actor::Page ? QStringLiteral("page") : QStringLiteral("plugin");
}

QVariantMap VariableChange::Describe() const
{
    QVariantMap row{{QStringLiteral("seq"), sequence},
                    {QStringLiteral("name"), name},
                    {QStringLiteral("kind"), kind == Kind::Set ? QStringLiteral("set") : QStringLiteral("trigger")},
                    {QStringLiteral("by"), NameOf(by)},
                    {QStringLiteral("value"), value}};
    if (cause > 0)
        row.insert(QStringLiteral("cause"), cause);
    return row;
}
