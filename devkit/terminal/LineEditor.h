#pragma once

#include <QString>
#include <QStringList>
#include <QTextDecoder>

/// The line that somebody types at a terminal whose keys arrive one by one. Pure: bytes in, lines out; what the
/// terminal should show is asked for.
class LineEditor
{
public:
    LineEditor();

    /// Takes the bytes of some keys and returns the lines that they finish.
    QStringList Feed(const QByteArray& bytes);

    /// Ctrl-D was pressed on an empty line.
    bool HasEnded() const { return m_ended; }

    /// What draws `prompt` and the line anew over the present line of a terminal with so many columns.
    QString Draw(const QString& prompt, int columns) const;
    /// What clears the present line of the terminal.
    static QString Clear();

private:
    void OnKey(QChar key, QStringList& finished);
    void OnControl(ushort key, QStringList& finished);
    void OnEscape(const QString& sequence);
    void Finish(QStringList& finished);
    void DeleteBefore(int from);
    void Recall(int step);
    /// The place before or behind the character, as a reader sees it, beside the cursor.
    int Before() const;
    int Behind() const;

    QTextDecoder m_decoder;
    QString m_text;
    int m_cursor = 0;
    QString m_escape; // an escape sequence that has begun
    QStringList m_history;
    int m_recalled = 0; // index in the history; its size while the line is a new one
    bool m_ended = false;
};
