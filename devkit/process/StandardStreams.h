#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

/// Before anything is opened: a standard stream that this process was started without becomes one at its end, so that
/// no file or pipe takes its number. Bytes pass as they are.
void PrepareStandardStreams();

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

    /// The last Read() gave nothing because the input cannot be read.
    bool HasFailed() const { return m_failed; }

    /// Makes a Read() that blocks, and every later one, return at once. Any thread.
    void Cancel();

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
    bool m_failed = false;
};

/// The process's standard output, written by one thread and cancelled by others.
class StandardOutput
{
public:
    StandardOutput();
    ~StandardOutput();
    StandardOutput(const StandardOutput&) = delete;
    StandardOutput& operator=(const StandardOutput&) = delete;

    /// Writes all bytes, however long the reader takes. False: nobody takes them any more; see Error().
    bool Write(const QByteArray& bytes);

    /// Why nothing can be written; empty when all is well, when the reader has gone and after Cancel().
    QString Error() const;

    /// Blocks until Cancel() or until the reader has gone.
    void WaitForEnd();

    /// Makes a Write() that blocks, and every later one, give up. Any thread.
    void Cancel();

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};
