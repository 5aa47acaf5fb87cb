#include "devkit/core/LogTail.h"

#include <QFile>
#include <QRegularExpression>
#include <QtEndian>

#include <algorithm>

namespace
{

constexpr int kNoLevel = 0;

constexpr const char* kLineEnd = "\r\n";

/// The text from a byte of the file on, which is UTF-16LE.
QString ReadString(QFile& file, qint64 start)
{
    file.seek(start);
    const QByteArray bytes = file.readAll();
    QString text(bytes.size() / 2, Qt::Uninitialized);
    qFromLittleEndian<quint16>(bytes.constData(), text.size(), text.data());
    return text;
}

/// The last `size` bytes of the file from the first whole line on.
QStringList ReadLines(QFile& file, qint64 size)
{
    const qint64 start = std::max<qint64>(file.size() - size, 0) & ~qint64{1};
    QString text = ReadString(file, start);
    if (text.startsWith(QChar::ByteOrderMark))
        text.remove(0, 1);
    QStringList lines = text.split(QLatin1String(kLineEnd));
    if (start > 0)
        lines.removeFirst();
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

} // namespace

std::optional<LogMessage> MessageBegunBy(const QString& line)
{
    static const QRegularExpression s_prefix(
        QStringLiteral("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3} \\[[0-9a-f]+\\.[0-9a-f]+\\] (..): "));
    static const QStringList s_tags{QStringLiteral("*F"), QStringLiteral("*E"), QStringLiteral(".W"),
                                    QStringLiteral(" I"), QStringLiteral(" D"), QStringLiteral(" V")};
    const QRegularExpressionMatch match = s_prefix.match(line);
    if (!match.hasMatch())
        return std::nullopt;
    return LogMessage{static_cast<int>(s_tags.indexOf(match.captured(1))) + 1, line.mid(match.capturedEnd())};
}

QStringList FilterLog(const QStringList& lines, int maximumLevel)
{
    QStringList kept;
    int level = kNoLevel;
    for (const QString& line : lines)
    {
        const std::optional<LogMessage> message = MessageBegunBy(line);
        level = message ? message->level : line.isEmpty() ? kNoLevel : level;
        if (maximumLevel == kNoLevel || (level != kNoLevel && level <= maximumLevel))
            kept.append(line);
    }
    return kept;
}

QStringList ReadLogTail(const QString& fileName, qint64 count, int maximumLevel)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    constexpr qint64 kFirstPiece = 64LL * 1024;
    QStringList lines;
    for (qint64 size = kFirstPiece; lines.size() < count; size *= 4)
    {
        lines = FilterLog(ReadLines(file, size), maximumLevel);
        if (size >= file.size())
            break;
    }
    return lines.mid(static_cast<int>(std::max<qint64>(lines.size() - count, 0)));
}

QStringList ReadLogFrom(const QString& fileName, qint64& end)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
    {
        end = 0;
        return {};
    }
    if (end < 0)
    {
        end = file.size();
        return {};
    }
    if (file.size() < end)
        end = 0;
    const QString text = ReadString(file, end);
    const int whole = text.lastIndexOf(QLatin1String(kLineEnd));
    if (whole < 0)
        return {};
    QStringList lines = text.left(whole).split(QLatin1String(kLineEnd));
    if (end == 0 && lines.first().startsWith(QChar::ByteOrderMark))
        lines.first().remove(0, 1);
    end += (whole + 2) * qint64{2};
    return lines;
}
