#pragma once

#include <QString>

/// Text for a terminal: control characters (C0, DEL, C1), which it would obey, as escapes. Line feeds stay.
inline QString Printable(const QString& text)
{
    QString printable;
    printable.reserve(text.size());
    for (const QChar c : text)
        if (c.category() == QChar::Other_Control && c != QLatin1Char('\n'))
            printable += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
        else
            printable += c;
    return printable;
}
