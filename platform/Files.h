#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace Platform
{

/// A file open for writing; closed by the destructor. Others may read, write, rename and delete it meanwhile, and child
/// processes do not inherit it. After a failure LastError() tells the reason. One thread at a time.
class File
{
public:
    File() = default;
    ~File();
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    /// Opens the file, which is made if it is missing. `security` is an SDDL text for a file that is made, or null for
    /// the system's default; POSIX grants reading to all where the text names authenticated users, else to the owner.
    bool Open(const std::wstring& path, const wchar_t* security);
    bool Close();
    bool IsOpen() const { return m_handle != kInvalid; }

    /// One write at the end, wherever that is now. False: not all of it was written, `written` tells how much.
    bool Write(const void* data, std::size_t size, std::size_t& written);

    /// Where the end is.
    bool SeekToEnd(std::uint64_t& end);

    /// Cuts the file to this size.
    bool Truncate(std::uint64_t size);

    /// Returns when everything written is on the disk.
    bool Flush();

private:
    static constexpr std::intptr_t kInvalid = -1;

    std::intptr_t m_handle = kInvalid;
};

/// Each answers whether it succeeded; after a failure LastError() tells the reason.
bool FileExists(const std::wstring& path); ///< There is something of this name that is not a folder.
bool FolderExists(const std::wstring& path);
bool MakeFolder(const std::wstring& path, const wchar_t* security); ///< `security` as for File::Open().
bool Move(const std::wstring& from, const std::wstring& to);        ///< Replaces a file `to`.
bool Remove(const std::wstring& path);                              ///< Of a file.

/// Has a file removed when the system starts next. Always false on POSIX, where a file that is in use can be removed.
bool RemoveAtRestart(const std::wstring& path);

} // namespace Platform
