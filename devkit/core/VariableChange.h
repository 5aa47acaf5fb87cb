#pragma once

#include <QString>
#include <QVariantMap>

/// Who wrote a variable or fired a trigger.
enum class Actor
{
    Page,
    PlugIn
};

/// One write or trigger, as the history keeps it.
struct VariableChange
{
    enum class Kind
    {
        Set,
        Trigger
    };

    quint64 sequence; // counted from 1
    QString name;
    Kind kind;
    Actor by;
    QVariant value;

    /// {"seq", "name", "kind", "by", "value"}
    QVariantMap Describe() const;
};
