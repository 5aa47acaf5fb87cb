#include "devkit/terminal/LineEditor.h"

#include "devkit/terminal/DisplayWidth.h"

#include <QTextBoundaryFinder>
#include <QTextCodec>

#include <algorithm>

namespace
{

constexpr ushort kEscape = 0x1B;
constexpr ushort kBackspace = 0x08;
constexpr ushort kDelete = 0x7F;

constexpr ushort Ctrl(char letter)
{
    return static_cast<ushort>(letter - 'A' + 1);
}

} // namespace

LineEditor::LineEditor() : m_decoder(QTextCodec::codecForName("UTF-8"), QTextCodec::IgnoreHeader) {}

QStringList LineEditor::Feed(const QByteArray& bytes)
{
    QStringList finished;
    const QString keys = m_decoder.toUnicode(bytes);
    for (const QChar key : keys)
        OnKey(key, finished);
    return finished;
}

QString LineEditor::Draw(const QString& prompt, int columns) const
{
    // Of a line that is too long, the part around the cursor is shown: a line never wraps.
    const int room = std::max(columns - prompt.size() - 1, 1);
    const auto widthOf = [this](int from, int to) { return DisplayWidth(m_text.mid(from, to - from)); };
    QTextBoundaryFinder at(QTextBoundaryFinder::Grapheme, m_text);
    const auto move = [&at](int from, bool forward) {
        at.setPosition(from);
        return forward ? at.toNextBoundary() : at.toPreviousBoundary();
    };
    int left = room;
    int start = m_cursor;
    for (int before = move(start, false); start > 0 && left >= widthOf(before, start); before = move(start, false))
    {
        left -= widthOf(before, start);
        start = before;
    }
    int end = m_cursor;
    int back = 0;
    for (int behind = move(end, true); end < m_text.size() && left >= widthOf(end, behind); behind = move(end, true))
    {
        left -= widthOf(end, behind);
        back += widthOf(end, behind);
        end = behind;
    }
    return Clear() + prompt + m_text.mid(start, end - start) +
           (back > 0 ? QStringLiteral("\x1b[%1D").arg(back) : QString());
}

QString LineEditor::Clear()
{
    return QStringLiteral("\r\x1b[K");
}

void LineEditor::OnKey(QChar key, QStringList& finished)
{
    if (!m_escape.isEmpty())
    {
        m_escape += key;
        const bool introducer = m_escape.size() == 2 && (key == QLatin1Char('[') || key == QLatin1Char('O'));
        const bool final = key.unicode() >= '@' && key.unicode() <= '~';
        if (!introducer && (final || m_escape.size() == 2))
        {
            OnEscape(m_escape.mid(1));
            m_escape.clear();
        }
    }
    else if (key.unicode() == kEscape)
    {
        m_escape = key;
    }
    else if (key.category() == QChar::Other_Control)
    {
        OnControl(key.unicode(), finished);
    }
    else
    {
        m_text.insert(m_cursor++, key);
    }
}

void LineEditor::OnControl(ushort key, QStringList& finished)
{
    switch (key)
    {
    case '\r':
    case '\n':
        Finish(finished);
        break;
    case kBackspace:
    case kDelete:
        DeleteBefore(Before());
        break;
    case Ctrl('U'):
        DeleteBefore(0);
        break;
    case Ctrl('W'):
        DeleteBefore(m_text.lastIndexOf(QLatin1Char(' '), m_cursor - 2) + 1);
        break;
    case Ctrl('K'):
        m_text.truncate(m_cursor);
        break;
    case Ctrl('A'):
        m_cursor = 0;
        break;
    case Ctrl('E'):
        m_cursor = m_text.size();
        break;
    case Ctrl('D'):
        m_ended = m_ended || m_text.isEmpty();
        m_text.remove(m_cursor, Behind() - m_cursor);
        break;
    default:
        break;
    }
}

void LineEditor::OnEscape(const QString& sequence)
{
    const QString key = QString(sequence).replace(QLatin1Char('O'), QLatin1Char('['));
    if (key == QLatin1String("[A") || key == QLatin1String("[B"))
        Recall(key == QLatin1String("[A") ? -1 : 1);
    else if (key == QLatin1String("[D"))
        m_cursor = Before();
    else if (key == QLatin1String("[C"))
        m_cursor = Behind();
    else if (key == QLatin1String("[H"))
        m_cursor = 0;
    else if (key == QLatin1String("[F"))
        m_cursor = m_text.size();
    else if (key == QLatin1String("[3~"))
        m_text.remove(m_cursor, Behind() - m_cursor);
}

void LineEditor::Finish(QStringList& finished)
{
    if (!m_text.trimmed().isEmpty() && (m_history.isEmpty() || m_history.last() != m_text))
        m_history.append(m_text);
    finished.append(m_text);
    m_text.clear();
    m_cursor = 0;
    m_recalled = m_history.size();
}

void LineEditor::DeleteBefore(int from)
{
    const int start = std::max(from, 0);
    m_text.remove(start, m_cursor - start);
    m_cursor = start;
}

void LineEditor::Recall(int step)
{
    m_recalled = std::clamp(m_recalled + step, 0, m_history.size());
    m_text = m_history.value(m_recalled);
    m_cursor = m_text.size();
}

int LineEditor::Before() const
{
    QTextBoundaryFinder at(QTextBoundaryFinder::Grapheme, m_text);
    at.setPosition(m_cursor);
    return std::max(at.toPreviousBoundary(), 0);
}

int LineEditor::Behind() const
{
    QTextBoundaryFinder at(QTextBoundaryFinder::Grapheme, m_text);
    at.setPosition(m_cursor);
    const int next = at.toNextBoundary();
    return next < 0 ? m_text.size() : next;
}
