#pragma once

#include <QtGlobal>

/// Asks a console program to end, as a person or the system would: SIGTERM, or Ctrl-C in its console. False: the system
/// refused.
bool RequestEnd(qint64 processId);
