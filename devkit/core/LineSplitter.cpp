#include "devkit/core/LineSplitter.h"

void LineSplitter::Feed(const QByteArray& bytes)
{
    int start = 0;
    for (int end = bytes.indexOf('\n'); end >= 0; end = bytes.indexOf('\n', start))
    {
        Append(bytes.constData() + start, end - start);
        EndLine();
        start = end + 1;
    }
    Append(bytes.constData() + start, bytes.size() - start);
}

void LineSplitter::Finish()
{
    if (m_skipping || !m_partial.isEmpty())
        EndLine();
}

std::optional<LineSplitter::Line> LineSplitter::Take()
{
    if (m_lines.empty())
        return std::nullopt;
    Line line = m_lines.front();
    m_lines.pop_front();
    return line;
}

void LineSplitter::Append(const char* bytes, int size)
{
    // One byte more than the limit is kept, for it may be the CR of the line's end.
    if (!m_skipping && size <= m_limit + 1 - m_partial.size())
    {
        m_partial.append(bytes, size);
        return;
    }
    m_skipping = true;
    m_partial = QByteArray();
}

void LineSplitter::EndLine()
{
    if (m_partial.endsWith('\r'))
        m_partial.chop(1);
    const bool tooLong = m_skipping || m_partial.size() > m_limit;
    m_lines.push_back({tooLong ? QByteArray() : m_partial, tooLong});
    m_partial = QByteArray();
    m_skipping = false;
}
