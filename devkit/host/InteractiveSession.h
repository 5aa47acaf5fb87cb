#pragma once

#include "devkit/host/Console.h"
#include "devkit/host/TypedCommands.h"
#include "devkit/host/VariableHub.h"

class Host;

/// Shows a person the main page of a host, tells of changes as they happen and carries out what is typed.
class InteractiveSession
{
public:
    explicit InteractiveSession(Host& host);
    ~InteractiveSession();
    InteractiveSession(const InteractiveSession&) = delete;
    InteractiveSession& operator=(const InteractiveSession&) = delete;

    /// Loads the plug-in and shows the page. False: it could not be used; why is on standard error.
    bool Start();

    void Warn(const QString& sentence);

private:
    void OnChange(const VariableChange& change, const QVariant& previous);

    Host& m_host;
    Console m_console;
    TypedCommands m_commands;
};
