#pragma once

#include "tests/support/ChildProcess.h"

#include <QByteArray>
#include <QStringList>

#include <string>

/// A program of the build, running beside the test.
class Program
{
public:
    Program(const char* name, const QStringList& arguments,
            ChildProcess::Console console = ChildProcess::Console::None);
    /// Kills it if it still runs.
    ~Program();

    void Send(const std::string& line);
    /// The next line of its output, without its end; waits for it. Empty also if there is no more.
    std::string Line();
    /// Waits for its end. The exit code, or -1 if it was killed or does not end.
    int ExitCode();
    void Kill() { m_process.kill(); }
    /// Ctrl-C, where the system has a signal for it.
    bool Terminate() { return m_process.RequestEnd(); }
    std::string RestOfOutput();
    std::string Errors();
    QProcess& Process() { return m_process; }

private:
    ChildProcess m_process;
};
