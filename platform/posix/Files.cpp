#include "platform/Files.h"

#include "text/Utf.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cwchar>

namespace Platform
{

namespace
{

constexpr mode_t kExecuteBits = 0111;

/// The permission bits of a file; a folder has the execute bits beside each right to read.
mode_t FileMode(const wchar_t* security)
{
    if (!security)
        return 0666;
    return std::wcsstr(security, L";;;AU)") != nullptr ? 0644 : 0600;
}

mode_t FolderMode(const wchar_t* security)
{
    const mode_t mode = FileMode(security);
    return mode | ((mode >> 2) & kExecuteBits);
}

int Descriptor(std::intptr_t handle)
{
    return static_cast<int>(handle);
}

} // namespace

File::~File()
{
    Close();
}

bool File::Open(const std::wstring& path, const wchar_t* security)
{
    Close();
    m_handle =
        ::open(Text::ToUtf8(path).c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOCTTY, FileMode(security));
    return IsOpen();
}

bool File::Close()
{
    if (!IsOpen())
        return true;
    const bool closed = ::close(Descriptor(m_handle)) == 0;
    m_handle = kInvalid;
    return closed;
}

bool File::Write(const void* data, std::size_t size, std::size_t& written)
{
    ssize_t result;
    do
    {
        result = ::write(Descriptor(m_handle), data, size);
    } while (result < 0 && errno == EINTR);
    written = result < 0 ? 0 : static_cast<std::size_t>(result);
    return written == size;
}

bool File::SeekToEnd(std::uint64_t& end)
{
    const off_t position = ::lseek(Descriptor(m_handle), 0, SEEK_END);
    if (position < 0)
        return false;
    end = static_cast<std::uint64_t>(position);
    return true;
}

bool File::Truncate(std::uint64_t size)
{
    return ::ftruncate(Descriptor(m_handle), static_cast<off_t>(size)) == 0;
}

bool File::Flush()
{
    return ::fdatasync(Descriptor(m_handle)) == 0;
}

bool FileExists(const std::wstring& path)
{
    struct stat status
    {};
    return ::lstat(Text::ToUtf8(path).c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}

bool FolderExists(const std::wstring& path)
{
    struct stat status
    {};
    return ::stat(Text::ToUtf8(path).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool MakeFolder(const std::wstring& path, const wchar_t* security)
{
    return ::mkdir(Text::ToUtf8(path).c_str(), FolderMode(security)) == 0;
}

bool Move(const std::wstring& from, const std::wstring& to)
{
    return std::rename(Text::ToUtf8(from).c_str(), Text::ToUtf8(to).c_str()) == 0;
}

bool Remove(const std::wstring& path)
{
    return ::unlink(Text::ToUtf8(path).c_str()) == 0;
}

bool RemoveAtRestart(const std::wstring&)
{
    return false;
}

} // namespace Platform
