#include "devkit/process/StandardStreams.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace
{

/// A pipe that becomes readable, and stays so, when waiting is to end.
class Wake
{
public:
    Wake()
    {
        if (pipe(m_ends.data()) == 0)
            for (const int end : m_ends)
                fcntl(end, F_SETFD, FD_CLOEXEC);
    }
    ~Wake()
    {
        for (const int end : m_ends)
            close(end);
    }
    Wake(const Wake&) = delete;
    Wake& operator=(const Wake&) = delete;

    void Call() const
    {
        const char byte = 0;
        while (write(m_ends[1], &byte, 1) < 0 && errno == EINTR)
        {}
    }

    /// Waits for the stream. False: woken.
    bool WaitFor(int stream, short events) const
    {
        std::array<pollfd, 2> sources{pollfd{stream, events, 0}, pollfd{m_ends[0], POLLIN, 0}};
        while (poll(sources.data(), sources.size(), -1) < 0 && errno == EINTR)
        {}
        return sources[1].revents == 0;
    }

private:
    std::array<int, 2> m_ends{-1, -1};
};

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
    Wake wake;
};

StandardInput::StandardInput() : m_implementation(std::make_unique<Implementation>()) {}

StandardInput::~StandardInput() = default;

QByteArray StandardInput::Read()
{
    QByteArray bytes(64 * 1024, Qt::Uninitialized);
    ssize_t count = -1;
    do
    {
        if (!m_implementation->wake.WaitFor(STDIN_FILENO, POLLIN))
            return {};
        count = read(STDIN_FILENO, bytes.data(), static_cast<std::size_t>(bytes.size()));
    } while (count < 0 && (errno == EINTR || errno == EAGAIN));
    m_failed = count < 0;
    bytes.resize(static_cast<int>(std::max<ssize_t>(count, 0)));
    return bytes;
}

void StandardInput::Cancel()
{
    m_implementation->wake.Call();
}

struct StandardOutput::Implementation
{
    Wake wake;
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
        if (!m_implementation->wake.WaitFor(STDOUT_FILENO, POLLOUT))
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
    return error == 0 || error == EPIPE ? QString() : QString::fromLocal8Bit(std::strerror(error));
}

void StandardOutput::WaitForEnd()
{
    m_implementation->wake.WaitFor(STDOUT_FILENO, 0);
}

void StandardOutput::Cancel()
{
    m_implementation->wake.Call();
}
