#pragma once

#include <QString>

/// How text is dressed for the terminal: colours and box characters where it has them, plain text where it has not.
struct TextStyle
{
    bool colours = false;
    bool unicode = false;

    QString Strong(const QString& text) const { return Dress("1", text); }
    QString Faint(const QString& text) const { return Dress("2", text); }
    QString Good(const QString& text) const { return Dress("32", text); }
    QString Bad(const QString& text) const { return Dress("31", text); }
    QString Notice(const QString& text) const { return Dress("33", text); }

    QString Rule(int columns) const { return Faint(QString(columns, unicode ? QChar(0x2500) : QLatin1Char('-'))); }
    QString Arrow() const { return unicode ? QString(QChar(0x2192)) : QStringLiteral("->"); }
    QString Dot() const { return unicode ? QString(QChar(0x25CF)) : QStringLiteral("*"); }

private:
    QString Dress(const char* code, const QString& text) const
    {
        return colours ? QStringLiteral("\x1b[%1m%2\x1b[0m").arg(QLatin1String(code), text) : text;
    }
};
