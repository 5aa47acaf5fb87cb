#pragma once

#include <QByteArray>

#include <deque>
#include <optional>

/// Cuts a stream of bytes into lines. A line ends with LF or CR LF or with the end of the stream; one that is longer
/// than the limit is reported once and skipped to its end, so that memory stays bounded.
class LineSplitter
{
public:
    struct Line
    {
        QByteArray text; // without its end; empty when too long
        bool tooLong = false;
    };

    explicit LineSplitter(int limit) : m_limit(limit) {}

    void Feed(const QByteArray& bytes);
    /// The stream has ended: what follows the last LF is a line too.
    void Finish();
    std::optional<Line> Take();

private:
    void Append(const char* bytes, int size);
    void EndLine();

    const int m_limit;
    QByteArray m_partial;
    bool m_skipping = false;
    std::deque<Line> m_lines;
};
