#include "devkit/terminal/Terminal.h"

#include <QByteArray>

#include <cstring>

#include <langinfo.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

bool Terminal::IsInteractive()
{
    return isatty(STDIN_FILENO) != 0 && isatty(STDOUT_FILENO) != 0;
}

bool Terminal::HasColours()
{
    return isatty(STDOUT_FILENO) != 0 && qEnvironmentVariableIsEmpty("NO_COLOR") && qgetenv("TERM") != "dumb";
}

bool Terminal::IsUtf8()
{
    return std::strcmp(nl_langinfo(CODESET), "UTF-8") == 0;
}

int Terminal::Width()
{
    winsize size{};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

struct Terminal::KeyMode::Saved
{
    bool valid = false;
    termios mode{};
};

Terminal::KeyMode::KeyMode() : m_saved(std::make_unique<Saved>())
{
    m_saved->valid = tcgetattr(STDIN_FILENO, &m_saved->mode) == 0;
    if (m_saved->valid)
    {
        termios mode = m_saved->mode;
        mode.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
        mode.c_cc[VMIN] = 1;
        mode.c_cc[VTIME] = 0;
        tcsetattr(STDIN_FILENO, TCSADRAIN, &mode);
    }
}

Terminal::KeyMode::~KeyMode()
{
    if (m_saved->valid)
        tcsetattr(STDIN_FILENO, TCSADRAIN, &m_saved->mode);
}
