#include "platform/KnownFolders.h"

#include "text/Utf.h"

#include <cstdlib>

namespace Platform
{

std::wstring EnvironmentVariable(const std::wstring& name)
{
    const char* const value = std::getenv(Text::ToUtf8(name).c_str());
    return value ? Text::FromUtf8(value) : std::wstring();
}

std::wstring CommonAppData()
{
    const std::wstring folder = EnvironmentVariable(L"VERIDAN_COMMON_APPDATA");
    return !folder.empty() ? folder : L"/var/lib";
}

std::wstring LocalAppData()
{
    for (const wchar_t* const variable : {L"VERIDAN_LOCAL_APPDATA", L"XDG_DATA_HOME"})
    {
        const std::wstring folder = EnvironmentVariable(variable);
        if (!folder.empty())
            return folder;
    }
    const std::wstring home = EnvironmentVariable(L"HOME");
    return !home.empty() ? home + L"/.local/share" : std::wstring();
}

} // namespace Platform
