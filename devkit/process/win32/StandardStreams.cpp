#include "devkit/process/StandardStreams.h"

#include <atomic>

#include <windows.h>

struct StandardInput::Implementation
{
    HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    std::atomic<HANDLE> reader{nullptr}; // the thread inside Read()
    std::atomic<bool> reading{false};
    std::atomic<bool> cancelled{false};
};

StandardInput::StandardInput() : m_implementation(std::make_unique<Implementation>()) {}

StandardInput::~StandardInput()
{
    if (const HANDLE reader = m_implementation->reader)
        CloseHandle(reader);
}

QByteArray StandardInput::Read()
{
    if (m_implementation->reader == nullptr)
    {
        HANDLE self = nullptr;
        DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), &self, 0, FALSE,
                        DUPLICATE_SAME_ACCESS);
        m_implementation->reader = self;
    }
    QByteArray bytes(64 * 1024, Qt::Uninitialized);
    DWORD count = 0;
    m_implementation->reading = true;
    const bool read = !m_implementation->cancelled && ReadFile(m_implementation->input, bytes.data(),
                                                               static_cast<DWORD>(bytes.size()), &count, nullptr);
    m_implementation->reading = false;
    bytes.resize(read ? static_cast<int>(count) : 0);
    return bytes;
}

void StandardInput::Cancel()
{
    m_implementation->cancelled = true;
    // The reader may be just about to read: only a read that has begun can be cancelled.
    while (m_implementation->reading)
    {
        CancelSynchronousIo(m_implementation->reader);
        CancelIoEx(m_implementation->input, nullptr); // a pipe that was made for overlapped reads
        Sleep(1);
    }
}

bool WriteStandardOutput(const QByteArray& bytes)
{
    const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    for (int done = 0; done < bytes.size();)
    {
        DWORD count = 0;
        if (!WriteFile(output, bytes.constData() + done, static_cast<DWORD>(bytes.size() - done), &count, nullptr))
            return false;
        done += static_cast<int>(count);
    }
    return true;
}
