#include "devkit/strata/Stamp.h"

#include "platform/Path.h"
#include "platform/Text.h"

#include <utility>

#include <windows.h>

namespace Strata
{

namespace
{

constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

class Handle
{
public:
    explicit Handle(HANDLE handle) : m_handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
    Handle(Handle&& other) noexcept : m_handle(std::exchange(other.m_handle, nullptr)) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle()
    {
        if (m_handle != nullptr)
            CloseHandle(m_handle);
    }
    HANDLE Get() const { return m_handle; }

private:
    HANDLE m_handle;
};

Handle OpenFile(const std::wstring& path, DWORD access, DWORD disposition)
{
    return Handle(CreateFileW(path.c_str(), access, ShareAll, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

class MappedStamp final : public Stamp
{
public:
    MappedStamp(std::wstring path, Handle file, Handle mapping, void* view, bool writable)
        : m_path(std::move(path)), m_file(std::move(file)), m_mapping(std::move(mapping)),
          m_word(static_cast<volatile LONG*>(view)), m_writable(writable)
    {}
    ~MappedStamp() override { UnmapViewOfFile(const_cast<LONG*>(m_word)); }

    uint32_t Word() const override
    {
        const LONG word = *m_word;
        MemoryBarrier();
        return static_cast<uint32_t>(word);
    }

    void Publish(uint32_t word) override
    {
        if (!m_writable)
            return;
        InterlockedExchange(m_word, static_cast<LONG>(word));
        // Those who watch the folder are told of a write when its handle is closed.
        const Handle stamped = OpenFile(m_path, GENERIC_WRITE, OPEN_EXISTING);
        DWORD written = 0;
        WriteFile(stamped.Get(), &word, sizeof word, &written, nullptr);
    }

private:
    std::wstring m_path;
    Handle m_file;
    Handle m_mapping;
    volatile LONG* m_word;
    bool m_writable;
};

/// The system watches folders, not files: Wait also returns for writes to the store itself.
class FolderWatch final : public StampWatch
{
public:
    explicit FolderWatch(const std::wstring& folder)
        : m_wake(CreateEventW(nullptr, FALSE, FALSE, nullptr)),
          m_change(FindFirstChangeNotificationW(folder.c_str(), FALSE, FILE_NOTIFY_CHANGE_LAST_WRITE))
    {}
    ~FolderWatch() override
    {
        if (m_change != INVALID_HANDLE_VALUE)
            FindCloseChangeNotification(m_change);
    }

    void Wait() override
    {
        constexpr DWORD Unwatched = 10; // ms between two looks at the word
        const bool watching = m_change != INVALID_HANDLE_VALUE;
        const HANDLE sources[] = {m_wake.Get(), m_change};
        const DWORD reason = WaitForMultipleObjects(watching ? 2 : 1, sources, FALSE, watching ? INFINITE : Unwatched);
        if (reason == WAIT_OBJECT_0 + 1)
            FindNextChangeNotification(m_change);
    }

    void Wake() override { SetEvent(m_wake.Get()); }

private:
    Handle m_wake;
    HANDLE m_change;
};

} // namespace

std::unique_ptr<Stamp> Stamp::Open(const std::string& path)
{
    const std::wstring widePath = Platform::FromUtf8(path);
    Handle writableFile = OpenFile(widePath, GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS);
    const bool writable = writableFile.Get() != nullptr;
    Handle file = writable ? std::move(writableFile) : OpenFile(widePath, GENERIC_READ, OPEN_EXISTING);
    if (file.Get() == nullptr)
        return nullptr;
    // Makes the file as long as the word; a shorter one that may not be written cannot be mapped.
    Handle mapping(
        CreateFileMappingW(file.Get(), nullptr, writable ? PAGE_READWRITE : PAGE_READONLY, 0, sizeof(LONG), nullptr));
    void* view = mapping.Get() == nullptr
                     ? nullptr
                     : MapViewOfFile(mapping.Get(), writable ? FILE_MAP_WRITE : FILE_MAP_READ, 0, 0, sizeof(LONG));
    return view == nullptr
               ? nullptr
               : std::make_unique<MappedStamp>(widePath, std::move(file), std::move(mapping), view, writable);
}

std::unique_ptr<StampWatch> StampWatch::Open(const std::string& path)
{
    const std::wstring folder = Platform::ParentFolder(Platform::FromUtf8(path));
    return std::make_unique<FolderWatch>(folder.empty() ? L"." : folder);
}

} // namespace Strata
