#pragma once

#include <QProcess>

/// A program beside a test.
class ChildProcess : public QProcess
{
public:
    enum class Console
    {
        None,
        Own
    };

    /// Windows asks a program to end through its console. Others have none, as Wine takes a second or two to make one.
    explicit ChildProcess(Console console = Console::None);

    /// Asks the program to end, as a person or the system would: SIGTERM, or Ctrl-C in its console. False: the system
    /// refused.
    bool RequestEnd();
};
