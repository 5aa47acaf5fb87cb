#pragma once

#include <array>
#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

/// A pipe by which one part of the process wakes another, and which its children do not inherit.
class Pipe
{
public:
    Pipe() : m_isOpen(pipe2(m_ends.data(), O_CLOEXEC) == 0)
    {
        if (m_isOpen)
            fcntl(Writer(), F_SETFL, O_NONBLOCK);
    }
    ~Pipe()
    {
        for (const int end : m_ends)
            if (m_isOpen)
                close(end);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    bool IsOpen() const { return m_isOpen; }
    int Reader() const { return m_ends[0]; }
    int Writer() const { return m_ends[1]; }

    /// Wakes who reads; a full pipe has done so already. May be called by a handler of signals.
    static void Wake(int writer, char what = 0)
    {
        const int error = errno;
        while (write(writer, &what, 1) < 0 && errno == EINTR)
        {}
        errno = error;
    }

private:
    std::array<int, 2> m_ends{-1, -1};
    const bool m_isOpen;
};
