#pragma once

#include "devkit/core/Result.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <utility>

/// What an argument of a command must be.
enum class ArgumentKind
{
    Any,
    Typed, // a value of another argument's type; among words as it is written
    String,
    Name,       // a string that is not empty
    VariableId, // a string that begins with "@"
    Strings,    // an array of strings
    StringMap,  // an object whose members are strings
    Entries,    // an object of store entries by key
    Bool,
    Natural, // a whole number from 0
    Milliseconds,
    Int32,
    UInt32,
    Constraints // a number of 32 bits; in words also "enforced" and "none"
};

/// One argument that a command takes.
struct Parameter
{
    enum class Need
    {
        Required,
        Optional
    };

    const char* name = nullptr;
    ArgumentKind kind = ArgumentKind::Any;
    Need need = Need::Required;
    const char* choices = nullptr; // for strings: the words that are allowed, joined by "|"
    /// Among words it stands as an option only ("--scope user") and has this value where it is not given ("": none).
    const char* option = nullptr;

    /// {"name", "type", "required", "choices"?}
    QVariantMap Describe() const;
    QStringList Choices() const;
    /// What a person wrote, as the value that it stands for; Check() tells whether it fits.
    QVariant FromWord(const QString& word) const;
};

/// The arguments of one command. The accessors expect what Check() has found in order.
class Arguments
{
public:
    explicit Arguments(QVariantMap values) : m_values(std::move(values)) {}

    /// Why an argument does not fit its parameter, as a sentence; empty when it does.
    QString Check(const Parameter& parameter) const;

    bool Has(const char* name) const { return m_values.contains(QLatin1String(name)); }
    QVariant Value(const char* name) const { return m_values.value(QLatin1String(name)); }
    QVariant Value(const char* name, const QVariant& otherwise) const;
    QString String(const char* name) const { return Value(name).toString(); }
    QStringList Strings(const char* name) const { return Value(name).toStringList(); }
    bool Bool(const char* name, bool otherwise = false) const { return Value(name, otherwise).toBool(); }
    qint64 Number(const char* name, qint64 otherwise = 0) const { return Value(name, otherwise).toLongLong(); }

private:
    QVariantMap m_values;
};
