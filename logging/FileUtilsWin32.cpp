#include "logging/FileUtilsWin32.h"

#include "platform/DebugOutput.h"
#include "platform/Files.h"
#include "platform/Format.h"
#include "platform/LastError.h"
#include "platform/Path.h"

namespace NlOrbLogging
{

bool FileUtilsWin32::FileExists(const std::wstring& path)
{
    return Platform::FileExists(path);
}

bool FileUtilsWin32::FileDelete(const std::wstring& path)
{
    return Platform::Remove(path) || Platform::RemoveAtRestart(path);
}

bool FileUtilsWin32::FileRename(const std::wstring& from, const std::wstring& to)
{
    if (Platform::Move(from, to))
        return true;
    const std::wstring text = Platform::FormatString(
        L"nl_orb_log!FileUtilsWin32::FileRename(): MoveFileEx '%s' -> '%s' failed with Win32 error: %lu\n",
        from.c_str(), to.c_str(), Platform::LastError());
    Platform::Get<Platform::DebugOutput>().Write(text.c_str());
    return false;
}

bool FileUtilsWin32::CreateDirectoryTree(const std::wstring& path, const wchar_t* security)
{
    if (DirectoryExists(path))
        return true;
    const std::wstring parent = Platform::ParentFolder(path);
    if (parent.empty() || !CreateDirectoryTree(parent, security))
        return false;
    // Another process may have been faster.
    return Platform::MakeFolder(path, security) || DirectoryExists(path);
}

bool FileUtilsWin32::DirectoryExists(const std::wstring& path)
{
    return Platform::FolderExists(path);
}

} // namespace NlOrbLogging
