#pragma once

#include "logging/FileLowLevel.h"
#include "logging/FileUtils.h"
#include "platform/NamedMutex.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace NlOrbLogging
{

/// One log file, which processes share: where it lies, who writes next, and when it is rotated. One thread at a time;
/// other processes are kept out by a named mutex.
class FileAccess
{
public:
    /// Reads the registry and the rights of the process; the file is opened by the first Write().
    FileAccess(const std::wstring& component, const std::wstring& module, std::unique_ptr<FileLowLevel> file,
               std::unique_ptr<FileUtils> utils, unsigned flags);
    virtual ~FileAccess() = default; // slot 0
    FileAccess(const FileAccess&) = delete;
    FileAccess& operator=(const FileAccess&) = delete;

    /// Appends data in one write, after a rotation if the file has grown too large. What cannot be written is lost.
    virtual void Write(const void* data, std::uint32_t bytes);
    virtual void Flush();

    /// Moves the live file and its predecessors on by one number, drops the oldest and begins anew. False: the live
    /// file could not be moved away or opened again.
    virtual bool Rotate();
    virtual bool EnsureOpen();

    /// Whether the live file is larger than it may be, whichever process wrote to it or has rotated it.
    virtual bool NeedsRotation();
    virtual void RemoveFile(const std::wstring& path);

    /// A name beside `path` that no file has, to move it out of the way before it is deleted. False: it does not fit.
    virtual bool MakeDeleteName(wchar_t* buffer, std::size_t size, const std::wstring& path);
    virtual void CreateLogDirectory();
    virtual void OpenFileMutex(const std::wstring& name, bool perUser);

    /// The name of the n-th predecessor of a log file: "Veridan.log" and 1 give "Veridan.1.log"; 0 is the file itself.
    static std::wstring NumberedName(const std::wstring& path, std::uint32_t number);

    const std::wstring& Path() const { return m_path; }

private:
    bool Reopen();

    /// Opens the live file, or finds the end of the one that is open, where it is still the live one: from those who
    /// wrote before, else from the system. The mutex is held.
    bool FindEnd(bool abandoned);

    Platform::NamedMutex m_mutex;
    std::wstring m_path; // empty: there is no file
    std::uint32_t m_maximumSize;
    std::uint32_t m_rotationCount;
    std::uint32_t m_rotations = 0; // of all processes, when the file was opened
    std::unique_ptr<FileLowLevel> m_file;
    std::unique_ptr<FileUtils> m_utils;
    const wchar_t* m_fileSecurity = nullptr; // an SDDL text
    bool m_perUser;
    bool m_lowIntegrity;
    std::wstring m_root; // "...\Norlane"
};

} // namespace NlOrbLogging
