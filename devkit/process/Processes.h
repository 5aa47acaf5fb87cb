#pragma once

#include <QProcess>

/// Starts the program with a socket that this one has, too, and without this one's terminal: the program calls
/// LeaveTerminal() as its first.
void StartApart(QProcess& process, const QString& program, const QStringList& arguments, qintptr socket);

/// The next connection that waits at a listening socket, which processes share; -1 where none does.
qintptr AcceptConnection(qintptr socket);

/// From here on the terminal's signals and its end do not concern this process.
void LeaveTerminal();

/// Ends a process without a warning.
void EndProcess(qint64 id);
