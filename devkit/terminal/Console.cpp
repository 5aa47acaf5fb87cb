#include "devkit/terminal/Console.h"

#include <utility>

namespace
{

constexpr int LongestLine = 1024 * 1024;

QString Prompt()
{
    return QStringLiteral("veridan> ");
}

} // namespace

Console::Console(Listener listener)
    : m_interactive(Terminal::IsInteractive()), m_style{Terminal::HasColours(), Terminal::IsUtf8()},
      m_listener(std::move(listener)), m_keyMode(m_interactive ? std::make_unique<Terminal::KeyMode>() : nullptr),
      m_lines(LongestLine)
{}

Console::~Console()
{
    if (m_promptShown)
        Write(LineEditor::Clear());
}

void Console::Listen()
{
    m_input = std::make_unique<InputReader>([this] { OnInput(); });
    DrawPrompt();
}

void Console::Print(const QString& text)
{
    Write(m_promptShown ? LineEditor::Clear() + text : text);
    m_promptShown = false;
    DrawPrompt();
}

void Console::OnInput()
{
    // A command that runs the event loop must not be overtaken by the next one.
    if (m_busy)
        return;
    m_busy = true;
    for (auto piece = m_input->Take(); piece && !m_ended; piece = m_input->Take())
        Consume(*piece);
    m_busy = false;
    DrawPrompt();
}

void Console::Consume(const QByteArray& piece)
{
    if (m_interactive)
    {
        const QStringList lines = m_editor.Feed(piece);
        for (const QString& line : lines)
        {
            Write(LineEditor::Clear() + m_style.Faint(Prompt()) + line + QLatin1Char('\n'));
            m_promptShown = false;
            m_listener.onLine(line);
        }
    }
    else
    {
        m_lines.Feed(piece);
        if (piece.isEmpty())
            m_lines.Finish();
        for (auto line = m_lines.Take(); line; line = m_lines.Take())
            m_listener.onLine(QString::fromUtf8(line->text));
    }
    m_ended = m_ended || piece.isEmpty() || m_editor.HasEnded();
    if (m_ended)
        m_listener.onEnd();
}

void Console::DrawPrompt()
{
    if (m_interactive && m_input != nullptr && !m_busy && !m_ended)
    {
        Write(m_editor.Draw(Prompt(), Terminal::Width()));
        m_promptShown = true;
    }
}

void Console::Write(const QString& text)
{
    if (!WriteStandardOutput(m_style.unicode ? text.toUtf8() : text.toLocal8Bit()) && !m_ended)
    {
        m_ended = true;
        m_listener.onEnd();
    }
}
