#include "platform/Files.h"

#include "platform/win32/SecurityAttributes.h"

namespace Platform
{

namespace
{

HANDLE Native(std::intptr_t handle)
{
    return reinterpret_cast<HANDLE>(handle);
}

DWORD Attributes(const std::wstring& path)
{
    return ::GetFileAttributesW(path.c_str());
}

} // namespace

File::~File()
{
    Close();
}

bool File::Open(const std::wstring& path, const wchar_t* security)
{
    Close();
    SecurityAttributes attributes(security);
    if (attributes.IsValid())
    {
        constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
        m_handle = reinterpret_cast<std::intptr_t>(::CreateFileW(
            path.c_str(), GENERIC_WRITE, kShareAll, attributes.Get(), OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    }
    return IsOpen();
}

bool File::Close()
{
    if (!IsOpen())
        return true;
    const bool closed = ::CloseHandle(Native(m_handle)) != FALSE;
    m_handle = kInvalid;
    return closed;
}

bool File::Write(const void* data, std::size_t size, std::size_t& written)
{
    DWORD count = 0;
    OVERLAPPED atTheEnd{};
    atTheEnd.Offset = atTheEnd.OffsetHigh = 0xFFFFFFFF;
    const bool succeeded = ::WriteFile(Native(m_handle), data, static_cast<DWORD>(size), &count, &atTheEnd) != FALSE;
    written = count;
    return succeeded && count == size;
}

bool File::SeekToEnd(std::uint64_t& end)
{
    LARGE_INTEGER position{};
    if (!::SetFilePointerEx(Native(m_handle), LARGE_INTEGER{}, &position, FILE_END))
        return false;
    end = static_cast<std::uint64_t>(position.QuadPart);
    return true;
}

bool File::Truncate(std::uint64_t size)
{
    LARGE_INTEGER position{};
    position.QuadPart = static_cast<LONGLONG>(size);
    return ::SetFilePointerEx(Native(m_handle), position, nullptr, FILE_BEGIN) && ::SetEndOfFile(Native(m_handle));
}

bool File::Flush()
{
    return ::FlushFileBuffers(Native(m_handle)) != FALSE;
}

bool FileExists(const std::wstring& path)
{
    WIN32_FIND_DATAW found;
    const HANDLE search = ::FindFirstFileW(path.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return false;
    ::FindClose(search);
    return (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool FolderExists(const std::wstring& path)
{
    const DWORD attributes = Attributes(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool MakeFolder(const std::wstring& path, const wchar_t* security)
{
    SecurityAttributes attributes(security);
    return attributes.IsValid() && ::CreateDirectoryW(path.c_str(), attributes.Get());
}

bool Move(const std::wstring& from, const std::wstring& to)
{
    return ::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING) != FALSE;
}

bool Remove(const std::wstring& path)
{
    return ::DeleteFileW(path.c_str()) != FALSE;
}

bool RemoveAtRestart(const std::wstring& path)
{
    return ::MoveFileExW(path.c_str(), nullptr, MOVEFILE_DELAY_UNTIL_REBOOT) != FALSE;
}

} // namespace Platform
