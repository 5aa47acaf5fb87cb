#pragma once

#include <QtGlobal>

/// Whether programs that are started from here on have the socket, too.
void ShareSocket(qintptr socket, bool shared);

/// Ends a process without a warning.
void EndProcess(qint64 id);

/// From here on the terminal's signals and its end do not concern this process.
void LeaveTerminal();
