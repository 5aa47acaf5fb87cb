#pragma once

#include "logging/FileUtils.h"

namespace NlOrbLogging
{

/// The file system itself.
class FileUtilsWin32 : public FileUtils
{
public:
    bool FileExists(const std::wstring& path) override;

    /// Now, else when the system starts next.
    bool FileDelete(const std::wstring& path) override;

    /// Replaces a file of the new name. A failure goes to the debugger output.
    bool FileRename(const std::wstring& from, const std::wstring& to) override;

    /// The folder with all that lead to it, all with the same security; true if it exists.
    bool CreateDirectoryTree(const std::wstring& path, const wchar_t* security) override;
    bool DirectoryExists(const std::wstring& path) override;
};

} // namespace NlOrbLogging
