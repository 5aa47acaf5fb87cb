#pragma once

#include <QStringList>

/// What this program does as a child of its own, one function each; the exit code. What it has to tell goes to standard
/// output.

/// Starts the plug-in ("plug-in"), or only opens the store and reads the same keys ("bare"), or does that after loading
/// the libraries that the plug-in loads ("libraries"). Prints how many seconds that took and how many bytes the process
/// grew by.
int RunSample(const QString& what);

/// Writes a switch each time that standard input has a line, "1" or "0", as `strata set` does; in the end, when each of
/// the writes began.
int RunWriter();
