#pragma once

#include <QString>
#include <QStringList>

#include <optional>

struct LogMessage
{
    int level; // 0: of no level that is known
    QString text;
};

/// The level and the text of the message that a line begins; nothing for one that goes on with a message.
std::optional<LogMessage> MessageBegunBy(const QString& line);

/// The end of a log file: the last `count` lines whose level is `maximumLevel` or a lower number, oldest first. A line
/// of a message that has several takes the level of the message; lines without a level pass only without a limit (0). A
/// file that is not there has no lines.
QStringList ReadLogTail(const QString& file, qint64 count, int maximumLevel);

/// The whole lines behind the byte `end`, which moves to the end of the last of them; from the beginning again where
/// the file has become shorter. An `end` of -1 becomes the file's end, without lines.
QStringList ReadLogFrom(const QString& file, qint64& end);

/// Of a log's lines those of the messages whose level is `maximumLevel` or a lower number.
QStringList FilterLog(const QStringList& lines, int maximumLevel);
