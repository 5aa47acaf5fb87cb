#pragma once

#include "devkit/core/VariableHub.h"
#include "devkit/terminal/Console.h"
#include "devkit/terminal/TypedCommands.h"

#include <QObject>

class Host;

/// Shows a person the main page of a host, tells of changes as they happen and carries out what is typed.
class InteractiveSession
{
public:
    explicit InteractiveSession(Host& host);
    ~InteractiveSession();
    InteractiveSession(const InteractiveSession&) = delete;
    InteractiveSession& operator=(const InteractiveSession&) = delete;

    /// Loads the plug-in and shows the page. Why the plug-in cannot be used, else empty.
    QString Start();

    void Warn(const QString& sentence);

private:
    void OnChange(const VariableChange& change, const QVariant& previous);

    /// The first values of variables that are not on the main page are told of together, once the event loop runs.
    void CountFirstValue();

    Host& m_host;
    Console m_console;
    TypedCommands m_commands;
    int m_firstValues = 0;
    QObject m_firstValuesTold; // ends the telling with the session
};
