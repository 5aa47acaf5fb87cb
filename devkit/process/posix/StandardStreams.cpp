#include "devkit/process/StandardStreams.h"

#include <algorithm>
#include <array>
#include <cerrno>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

struct StandardInput::Implementation
{
    std::array<int, 2> wake{-1, -1}; // a pipe that becomes readable when reading is cancelled
};

StandardInput::StandardInput() : m_implementation(std::make_unique<Implementation>())
{
    if (pipe(m_implementation->wake.data()) == 0)
        for (const int end : m_implementation->wake)
            fcntl(end, F_SETFD, FD_CLOEXEC);
}

StandardInput::~StandardInput()
{
    for (const int end : m_implementation->wake)
        close(end);
}

QByteArray StandardInput::Read()
{
    std::array<pollfd, 2> sources{pollfd{STDIN_FILENO, POLLIN, 0}, pollfd{m_implementation->wake[0], POLLIN, 0}};
    QByteArray bytes(64 * 1024, Qt::Uninitialized);
    ssize_t count = -1;
    do
    {
        if (poll(sources.data(), sources.size(), -1) >= 0)
        {
            if (sources[1].revents != 0)
                return {};
            count = read(STDIN_FILENO, bytes.data(), static_cast<std::size_t>(bytes.size()));
        }
    } while (count < 0 && (errno == EINTR || errno == EAGAIN));
    bytes.resize(static_cast<int>(std::max<ssize_t>(count, 0)));
    return bytes;
}

void StandardInput::Cancel()
{
    const char byte = 0;
    while (write(m_implementation->wake[1], &byte, 1) < 0 && errno == EINTR)
    {}
}

bool WriteStandardOutput(const QByteArray& bytes)
{
    for (int done = 0; done < bytes.size();)
    {
        const ssize_t count =
            write(STDOUT_FILENO, bytes.constData() + done, static_cast<std::size_t>(bytes.size() - done));
        if (count < 0 && errno != EINTR)
            return false;
        done += static_cast<int>(std::max<ssize_t>(count, 0));
    }
    return true;
}
