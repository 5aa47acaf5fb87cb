#pragma once

#include <functional>
#include <memory>

/// What the process's terminal is like.
namespace Terminal
{

/// Somebody types: standard input and output are both a terminal, and one that understands where to draw.
bool IsInteractive();

/// Standard output is a terminal that shows colours, and the user has not declined them (NO_COLOR).
bool HasColours();

/// Text is written in UTF-8 here.
bool IsUtf8();

/// Columns of the terminal; 80 where there is none to ask.
int Width();

/// While it lives, keys arrive one by one and are not shown; Ctrl-C still asks the process to end. While the process is
/// stopped (Ctrl-Z), the terminal is as it was before; `onResume` is called, through the event loop, when it goes on.
class KeyMode
{
public:
    explicit KeyMode(std::function<void()> onResume);
    ~KeyMode();
    KeyMode(const KeyMode&) = delete;
    KeyMode& operator=(const KeyMode&) = delete;

private:
    struct Saved;
    std::unique_ptr<Saved> m_saved;
};

} // namespace Terminal
