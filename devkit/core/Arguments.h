#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <utility>

/// What an argument of a command must be.
enum class ArgumentKind
{
    Any,
    Text,
    Name,       // a text that is not empty
    VariableId, // a text that begins with "@"
    Texts,      // an array of texts
    TextMap,    // an object whose members are texts
    Flag,
    Natural, // a whole number from 0
    Milliseconds,
    Int32,
    UInt32
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
    const char* choices = nullptr; // for texts: the words that are allowed, joined by "|"
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
    QString Text(const char* name) const { return Value(name).toString(); }
    QStringList Texts(const char* name) const { return Value(name).toStringList(); }
    bool Flag(const char* name, bool otherwise) const { return Value(name, otherwise).toBool(); }
    qint64 Number(const char* name, qint64 otherwise = 0) const { return Value(name, otherwise).toLongLong(); }

private:
    QVariantMap m_values;
};
