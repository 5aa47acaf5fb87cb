#pragma once

#include <QByteArray>

#include <memory>

/// The process's standard input as bytes, read by one thread and cancelled by another.
class StandardInput
{
public:
    StandardInput();
    ~StandardInput();
    StandardInput(const StandardInput&) = delete;
    StandardInput& operator=(const StandardInput&) = delete;

    /// Blocks until there is input and returns what is there, at most 64 KiB; empty at the end of input, after an error
    /// and from Cancel() on.
    QByteArray Read();

    /// Makes a Read() that blocks, and every later one, return at once. Any thread.
    void Cancel();

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

/// Writes all bytes to standard output as they are and at once. False: nobody takes them any more.
bool WriteStandardOutput(const QByteArray& bytes);
