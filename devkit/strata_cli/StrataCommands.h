#pragma once

#include "devkit/core/CommandTable.h"

class StandardOutput;
class StoreAccess;

/// What the program does: the store's commands under shorter names, and those that move whole scopes.
class StrataCommands
{
public:
    StrataCommands(StoreAccess& store, StandardOutput& output, bool json);

    const CommandTable& Table() const { return m_table; }
    /// Carries out the request that the words make. The exit code; what went wrong is said on standard error.
    int Run(const QStringList& arguments);

    /// Says on standard error what went wrong, and answers the exit code for it.
    static int Complain(const QString& sentence, FailureKind kind);

private:
    Answer Get(const Arguments& arguments);
    /// Gives a request to set a value what its words left open.
    Answer Complete(QVariantMap& request) const;
    Answer List(const Arguments& arguments);
    Answer Watch(const Arguments& arguments);
    Answer Export(const Arguments& arguments);
    Answer Import(const Arguments& arguments);
    Answer Seed(const Arguments& arguments);
    Answer Write(const QString& scope, const QVariantMap& entries, bool absent);
    Answer Print(const QByteArray& text, const QString& file = QStringLiteral("-"));

    StoreAccess& m_store;
    StandardOutput& m_output;
    const bool m_json;
    CommandTable m_table;
};
