#pragma once

#include <QString>
#include <QStringList>

/// The end of a log file: the last `count` lines whose level is `maximumLevel` or a lower number, oldest first. A line
/// of a message that has several takes the level of the message; lines without a level pass only without a limit (0). A
/// file that is not there has no lines.
QStringList ReadLogTail(const QString& file, qint64 count, int maximumLevel);
