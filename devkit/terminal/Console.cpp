#include "devkit/terminal/Console.h"

#include <utility>

namespace
{

constexpr int kLongestLine = 1024 * 1024;

QString Prompt()
{
    return QStringLiteral("veridan> ");
}

} // namespace

Console::Console(StandardOutput& output, Listener listener)
    : m_output(output), m_interactive(Terminal::IsInteractive()), m_style{Terminal::HasColours(), Terminal::IsUtf8()},
      m_listener(std::move(listener)),
      m_keyMode(m_interactive ? std::make_unique<Terminal::KeyMode>([this] { DrawPrompt(); }) : nullptr),
      m_lines(kLongestLine)
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
    for (auto piece = m_input->Take(); piece && !m_ended; piece = m_input->Take())
        Consume(*piece);
    DrawPrompt();
}

void Console::Consume(const QByteArray& piece)
{
    if (m_interactive)
    {
        const QStringList lines = m_editor.Feed(piece);
        m_typed.insert(m_typed.end(), lines.begin(), lines.end());
    }
    else
    {
        m_lines.Feed(piece);
        if (piece.isEmpty())
            m_lines.Finish();
        for (auto line = m_lines.Take(); line; line = m_lines.Take())
            m_typed.push_back(QString::fromUtf8(line->text));
    }
    const bool ended = piece.isEmpty() || m_editor.HasEnded();
    // A line may run the event loop, and with it this function: what was typed first has gone from the queue then.
    while (!m_typed.empty())
    {
        const QString line = std::move(m_typed.front());
        m_typed.pop_front();
        if (m_interactive)
            Write(LineEditor::Clear() + m_style.Faint(Prompt()) + line + QLatin1Char('\n'));
        m_promptShown = false;
        m_listener.onLine(line);
    }
    if (ended && !std::exchange(m_ended, true))
        m_listener.onEnd();
}

void Console::DrawPrompt()
{
    if (m_interactive && m_input && !m_ended)
    {
        Write(m_editor.Draw(Prompt(), Terminal::Width()));
        m_promptShown = true;
    }
}

void Console::Write(const QString& text)
{
    if (!m_output.Write(m_style.unicode ? text.toUtf8() : text.toLocal8Bit()) && !std::exchange(m_ended, true))
        m_listener.onGone();
}
