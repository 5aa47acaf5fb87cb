#include "devkit/strata/Stamp.h"

#include "platform/Path.h"
#include "text/Utf.h"

#include <utility>

#include <windows.h>

namespace Strata
{

namespace
{

HANDLE FileOf(intptr_t file)
{
    return reinterpret_cast<HANDLE>(file);
}

intptr_t OpenOwn(const std::wstring& path, DWORD access, DWORD disposition)
{
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    constexpr DWORD kNotThroughLinks = FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT;
    return reinterpret_cast<intptr_t>(
        CreateFileW(path.c_str(), access, kShareAll, nullptr, disposition, kNotThroughLinks, nullptr));
}

/// Whether writing to the file changes no other one.
bool IsOnlyOurs(intptr_t file)
{
    constexpr DWORD kOthers = FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DIRECTORY;
    BY_HANDLE_FILE_INFORMATION status = {};
    return GetFileInformationByHandle(FileOf(file), &status) != FALSE && (status.dwFileAttributes & kOthers) == 0 &&
           status.nNumberOfLinks == 1;
}

intptr_t OpenForWriting(const std::wstring& path)
{
    const intptr_t there = OpenOwn(path, GENERIC_WRITE, OPEN_ALWAYS);
    if (FileOf(there) != INVALID_HANDLE_VALUE && IsOnlyOurs(there))
        return there;
    if (FileOf(there) != INVALID_HANDLE_VALUE)
        CloseHandle(FileOf(there));
    DeleteFileW(path.c_str());
    return OpenOwn(path, GENERIC_WRITE, CREATE_NEW);
}

/// The system watches folders, not files: Wait also returns for writes to the store itself.
class FolderWatch final : public StampWatch
{
public:
    explicit FolderWatch(std::wstring folder)
        : m_folder(std::move(folder)), m_wake(CreateEventW(nullptr, FALSE, FALSE, nullptr))
    {
        Watch();
    }
    ~FolderWatch() override
    {
        if (IsWatching())
            FindCloseChangeNotification(m_change);
        CloseHandle(m_wake);
    }

    void Wait() override
    {
        constexpr DWORD kUnwatched = 10; // ms between two looks
        if (!IsWatching() && Watch())
            return; // what happened before is not told
        const HANDLE sources[] = {m_wake, m_change};
        const DWORD reason =
            WaitForMultipleObjects(IsWatching() ? 2 : 1, sources, FALSE, IsWatching() ? INFINITE : kUnwatched);
        if (reason == WAIT_OBJECT_0 + 1 && FindNextChangeNotification(m_change) == FALSE)
        {
            FindCloseChangeNotification(m_change);
            m_change = INVALID_HANDLE_VALUE;
        }
    }

    void Wake() override { SetEvent(m_wake); }

private:
    bool IsWatching() const { return m_change != INVALID_HANDLE_VALUE; }

    bool Watch()
    {
        constexpr DWORD kStamped = FILE_NOTIFY_CHANGE_LAST_WRITE | FILE_NOTIFY_CHANGE_FILE_NAME;
        m_change = FindFirstChangeNotificationW(m_folder.c_str(), FALSE, kStamped);
        return IsWatching();
    }

    const std::wstring m_folder;
    const HANDLE m_wake;
    HANDLE m_change = INVALID_HANDLE_VALUE;
};

} // namespace

static_assert(sizeof(intptr_t) == sizeof(HANDLE), "a handle in a number; INVALID_HANDLE_VALUE is -1");

Stamp::Stamp(const std::string& path, Use use)
    : m_file(use == Use::Writing ? OpenForWriting(Text::FromUtf8(path))
                                 : OpenOwn(Text::FromUtf8(path), GENERIC_READ, OPEN_EXISTING))
{}

Stamp::Stamp(Stamp&& other) noexcept : m_file(std::exchange(other.m_file, kNone)) {}

Stamp& Stamp::operator=(Stamp&& other) noexcept
{
    std::swap(m_file, other.m_file);
    return *this;
}

/// Watchers of a folder are told of writes and not of a close: a byte behind the revision tells that it is committed.
/// Where the file was opened for reading only, the write is refused.
void Stamp::Close()
{
    if (m_file == kNone)
        return;
    constexpr char kCommitted = 0;
    OVERLAPPED behind = {};
    behind.Offset = sizeof(int64_t);
    DWORD size = 0;
    WriteFile(FileOf(m_file), &kCommitted, sizeof kCommitted, &size, &behind);
    CloseHandle(FileOf(std::exchange(m_file, kNone)));
}

bool Stamp::Read(int64_t& revision) const
{
    FILE_STANDARD_INFO status = {};
    OVERLAPPED start = {};
    DWORD size = 0;
    return m_file != kNone &&
           GetFileInformationByHandleEx(FileOf(m_file), FileStandardInfo, &status, sizeof status) != FALSE &&
           status.DeletePending == FALSE && status.NumberOfLinks != 0 &&
           ReadFile(FileOf(m_file), &revision, sizeof revision, &size, &start) != FALSE && size == sizeof revision;
}

bool Stamp::Write(int64_t revision)
{
    OVERLAPPED start = {};
    DWORD size = 0;
    return m_file != kNone && WriteFile(FileOf(m_file), &revision, sizeof revision, &size, &start) != FALSE &&
           size == sizeof revision;
}

std::unique_ptr<StampWatch> StampWatch::Open(const std::string& stampPath)
{
    const std::wstring folder = Platform::ParentFolder(Text::FromUtf8(stampPath));
    return std::make_unique<FolderWatch>(folder.empty() ? L"." : folder);
}

} // namespace Strata
