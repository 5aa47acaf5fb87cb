#include "platform/KnownFolders.h"

#include "platform/win32/Win32.h"

#include <knownfolders.h>
#include <objbase.h>
#include <shlobj.h>

namespace Platform
{

namespace
{

std::wstring Folder(const KNOWNFOLDERID& id)
{
    wchar_t* path = nullptr;
    const bool found = SUCCEEDED(::SHGetKnownFolderPath(id, KF_FLAG_DONT_VERIFY, nullptr, &path));
    std::wstring folder = found ? path : L"";
    ::CoTaskMemFree(path);
    return folder;
}

} // namespace

std::wstring CommonAppData()
{
    return Folder(FOLDERID_ProgramData);
}

std::wstring LocalAppData()
{
    return Folder(FOLDERID_LocalAppData);
}

std::wstring EnvironmentVariable(const std::wstring& name)
{
    std::wstring value;
    DWORD length = ::GetEnvironmentVariableW(name.c_str(), nullptr, 0);
    while (length > value.size()) // another thread may have made it longer
    {
        value.resize(length);
        length = ::GetEnvironmentVariableW(name.c_str(), value.data(), length);
    }
    value.resize(length);
    return value;
}

} // namespace Platform
