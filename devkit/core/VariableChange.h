#pragma once

#include <QString>
#include <QVariantMap>

/// Who wrote a variable or fired a trigger.
enum class Actor
{
    Page,
    PlugIn
};

/// As the commands call it.
QString NameOf(Actor actor);

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
    quint64 cause = 0; // the change that the plug-in was being told of; 0: none

    /// {"seq", "name", "kind", "by", "value", "cause" where there is one}
    QVariantMap Describe() const;
};
