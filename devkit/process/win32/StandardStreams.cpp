#include "devkit/process/StandardStreams.h"

#include <algorithm>
#include <atomic>

#include <windows.h>

namespace
{

/// A blocking call on a standard stream, made by one thread and cancelled by another.
class Cancellable
{
public:
    explicit Cancellable(DWORD stream) : m_stream(GetStdHandle(stream)) {}
    ~Cancellable()
    {
        if (const HANDLE caller = m_caller)
            CloseHandle(caller);
    }
    Cancellable(const Cancellable&) = delete;
    Cancellable& operator=(const Cancellable&) = delete;

    template <class Call>
    bool Do(Call&& call)
    {
        if (!m_caller)
        {
            HANDLE self = nullptr;
            DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), &self, 0, FALSE,
                            DUPLICATE_SAME_ACCESS);
            m_caller = self;
        }
        m_inside = true;
        const bool done = !m_cancelled && call(m_stream) != FALSE;
        m_inside = false;
        return done;
    }

    void Cancel()
    {
        m_cancelled = true;
        // The caller may be just about to block: only a call that has begun can be cancelled.
        while (m_inside)
        {
            CancelSynchronousIo(m_caller);
            CancelIoEx(m_stream, nullptr); // a pipe that was made for overlapped calls
            Sleep(1);
        }
    }

    bool IsCancelled() const { return m_cancelled; }

private:
    const HANDLE m_stream;
    std::atomic<HANDLE> m_caller{nullptr};
    std::atomic<bool> m_inside{false};
    std::atomic<bool> m_cancelled{false};
};

bool MeansEnd(DWORD error)
{
    return error == ERROR_BROKEN_PIPE || error == ERROR_NO_DATA || error == ERROR_HANDLE_EOF ||
           error == ERROR_OPERATION_ABORTED;
}

} // namespace

void PrepareStandardStreams()
{
    SetConsoleOutputCP(CP_UTF8);
}

struct StandardInput::Implementation
{
    Cancellable input{STD_INPUT_HANDLE};
};

StandardInput::StandardInput() : m_implementation(std::make_unique<Implementation>()) {}

StandardInput::~StandardInput() = default;

QByteArray StandardInput::Read()
{
    QByteArray bytes(64 * 1024, Qt::Uninitialized);
    DWORD count = 0;
    const bool read = m_implementation->input.Do([&bytes, &count](HANDLE stream) {
        return ReadFile(stream, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr);
    });
    m_failed = !read && !MeansEnd(GetLastError());
    bytes.resize(read ? static_cast<int>(count) : 0);
    return bytes;
}

void StandardInput::Cancel()
{
    m_implementation->input.Cancel();
}

struct StandardOutput::Implementation
{
    Cancellable output{STD_OUTPUT_HANDLE};
    DWORD error = 0;
};

StandardOutput::StandardOutput() : m_implementation(std::make_unique<Implementation>()) {}

StandardOutput::~StandardOutput() = default;

bool StandardOutput::Write(const QByteArray& bytes)
{
    for (int done = 0; done < bytes.size();)
    {
        DWORD count = 0;
        const bool written = m_implementation->output.Do([&bytes, &count, done](HANDLE stream) {
            return WriteFile(stream, bytes.constData() + done, static_cast<DWORD>(bytes.size() - done), &count,
                             nullptr);
        });
        if (!written)
        {
            m_implementation->error = GetLastError();
            return false;
        }
        done += static_cast<int>(count);
    }
    return true;
}

QString StandardOutput::Error() const
{
    const DWORD error = m_implementation->error;
    const bool isFailure = error != 0 && !MeansEnd(error) && !m_implementation->output.IsCancelled();
    return isFailure ? QStringLiteral("error %1").arg(error) : QString();
}

void StandardOutput::WaitForEnd()
{
    // Nothing tells that the reader of a pipe has gone, but that writing nothing to it fails.
    constexpr DWORD kIntervalMs = 200;
    DWORD count = 0;
    while (m_implementation->output.Do([&count](HANDLE stream) { return WriteFile(stream, "", 0, &count, nullptr); }))
        Sleep(kIntervalMs);
}

void StandardOutput::Cancel()
{
    m_implementation->output.Cancel();
}
