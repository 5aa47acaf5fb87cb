#include "devkit/process/StandardStreams.h"

#include "devkit/process/posix/Pipe.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace
{

/// Waits for the stream. False: woken, now or before.
bool WaitFor(int stream, short events, const Pipe& wake)
{
    std::array<pollfd, 2> sources{pollfd{stream, events, 0}, pollfd{wake.Reader(), POLLIN, 0}};
    while (poll(sources.data(), sources.size(), -1) < 0 && errno == EINTR)
    {}
    return sources[1].revents == 0;
}

} // namespace

void PrepareStandardStreams()
{
    // Opened for reading, each of the three is at its end: reading gives nothing and writing fails.
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream)
        if (fcntl(stream, F_GETFD) < 0) [[maybe_unused]]
            const int opened = open("/dev/null", O_RDONLY);
}

struct StandardInput::Implementation
{
    Pipe wake;
};

StandardInput::StandardInput() : m_implementation(std::make_unique<Implementation>()) {}

StandardInput::~StandardInput() = default;

QByteArray StandardInput::Read()
{
    QByteArray bytes(64 * 1024, Qt::Uninitialized);
    ssize_t count = -1;
    do
    {
        if (!WaitFor(STDIN_FILENO, POLLIN, m_implementation->wake))
            return {};
        count = read(STDIN_FILENO, bytes.data(), static_cast<std::size_t>(bytes.size()));
    } while (count < 0 && (errno == EINTR || errno == EAGAIN));
    m_failed = count < 0;
    bytes.resize(static_cast<int>(std::max<ssize_t>(count, 0)));
    return bytes;
}

void StandardInput::Cancel()
{
    Pipe::Wake(m_implementation->wake.Writer());
}

struct StandardOutput::Implementation
{
    Pipe wake;
    int error = 0;
};

StandardOutput::StandardOutput() : m_implementation(std::make_unique<Implementation>()) {}

StandardOutput::~StandardOutput() = default;

bool StandardOutput::Write(const QByteArray& bytes)
{
    // A pipe that can be written takes this much without blocking, also when it was not made so.
    constexpr int kPiece = 4096;
    for (int done = 0; done < bytes.size();)
    {
        if (!WaitFor(STDOUT_FILENO, POLLOUT, m_implementation->wake))
            return false;
        const ssize_t count = write(STDOUT_FILENO, bytes.constData() + done,
                                    static_cast<std::size_t>(std::min(bytes.size() - done, kPiece)));
        if (count < 0 && errno != EINTR && errno != EAGAIN)
        {
            m_implementation->error = errno;
            return false;
        }
        done += static_cast<int>(std::max<ssize_t>(count, 0));
    }
    return true;
}

QString StandardOutput::Error() const
{
    const int error = m_implementation->error;
    return error == 0 || error == EPIPE ? QString() : QString::fromStdString(std::generic_category().message(error));
}

void StandardOutput::WaitForEnd()
{
    WaitFor(STDOUT_FILENO, 0, m_implementation->wake);
}

void StandardOutput::Cancel()
{
    Pipe::Wake(m_implementation->wake.Writer());
}
