#pragma once

#include <string>

namespace NlOrbLogging
{

/// What a log needs of the file system. Every operation answers whether it succeeded. Security is an SDDL text, or null
/// for the system's default.
class FileUtils
{
public:
    FileUtils() = default;
    virtual ~FileUtils() = default; // slot 0
    FileUtils(const FileUtils&) = delete;
    FileUtils& operator=(const FileUtils&) = delete;

    virtual bool FileExists(const std::wstring& path) = 0;
    virtual bool FileDelete(const std::wstring& path) = 0;
    virtual bool FileRename(const std::wstring& from, const std::wstring& to) = 0;
    virtual bool CreateDirectoryTree(const std::wstring& path, const wchar_t* security) = 0;
    virtual bool DirectoryExists(const std::wstring& path) = 0;
};

} // namespace NlOrbLogging
