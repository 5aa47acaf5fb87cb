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

std::wstring ExpandEnvironment(const std::wstring& text)
{
    const DWORD size = ::ExpandEnvironmentStringsW(text.c_str(), nullptr, 0);
    if (size == 0)
        return {};
    std::wstring expanded(size, L'\0');
    expanded.resize(::ExpandEnvironmentStringsW(text.c_str(), expanded.data(), size) - 1);
    // The system leaves a variable that is not set as it stands.
    return expanded.find(L'%') == std::wstring::npos ? expanded : std::wstring();
}

} // namespace Platform
