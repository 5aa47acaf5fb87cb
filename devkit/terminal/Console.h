#pragma once

#include "devkit/core/InputReader.h"
#include "devkit/core/LineSplitter.h"
#include "devkit/terminal/LineEditor.h"
#include "devkit/terminal/Terminal.h"
#include "devkit/terminal/TextStyle.h"

#include <deque>
#include <functional>
#include <memory>

/// A conversation with a person: lines typed at a prompt, and lines printed above it whenever there is something to
/// tell, without disturbing what is being typed. Without a terminal: plain lines in and out, no prompt. UI thread.
class Console
{
public:
    struct Listener
    {
        std::function<void(const QString& line)> onLine;
        std::function<void()> onEnd;  // of the input
        std::function<void()> onGone; // nobody reads any more
    };

    Console(StandardOutput& output, Listener listener);
    /// Leaves the terminal as it was, with the cursor at the start of a line.
    ~Console();
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    /// Begins to read what is typed.
    void Listen();

    /// Prints whole lines; `text` ends with a line feed.
    void Print(const QString& text);

    const TextStyle& Style() const { return m_style; }
    int Columns() const { return m_interactive ? Terminal::Width() : 80; }

private:
    void OnInput();
    void Consume(const QByteArray& piece);
    void DrawPrompt();
    void Write(const QString& text);

    StandardOutput& m_output;

    const bool m_interactive;
    const TextStyle m_style;
    const Listener m_listener;
    std::unique_ptr<Terminal::KeyMode> m_keyMode;
    LineEditor m_editor;
    LineSplitter m_lines;
    bool m_promptShown = false;
    std::deque<QString> m_typed; // lines that are finished
    bool m_ended = false;
    std::unique_ptr<InputReader> m_input; // last: it calls back
};
