#include "platform/KnownFolders.h"

#include "platform/Text.h"

#include <cstdlib>

namespace Platform
{

namespace
{

std::wstring Variable(const std::string& name)
{
    const char* const value = std::getenv(name.c_str());
    return value != nullptr ? FromUtf8(value) : std::wstring();
}

std::wstring ValueOf(const std::wstring& name)
{
    if (name == L"ProgramData")
        return CommonAppData();
    return name == L"LOCALAPPDATA" ? LocalAppData() : Variable(ToUtf8(name));
}

} // namespace

std::wstring CommonAppData()
{
    const std::wstring folder = Variable("VERIDAN_COMMON_APPDATA");
    return !folder.empty() ? folder : L"/var/lib";
}

std::wstring LocalAppData()
{
    for (const char* const variable : {"VERIDAN_LOCAL_APPDATA", "XDG_DATA_HOME"})
    {
        const std::wstring folder = Variable(variable);
        if (!folder.empty())
            return folder;
    }
    const std::wstring home = Variable("HOME");
    return !home.empty() ? home + L"/.local/share" : std::wstring();
}

std::wstring ExpandEnvironment(const std::wstring& text)
{
    std::wstring expanded;
    std::size_t at = 0;
    for (;;)
    {
        const auto begin = text.find(L'%', at);
        const auto end = begin == std::wstring::npos ? begin : text.find(L'%', begin + 1);
        if (end == std::wstring::npos)
            return expanded.append(text, at, std::wstring::npos);
        const std::wstring value = ValueOf(text.substr(begin + 1, end - begin - 1));
        if (value.empty())
            return {};
        expanded.append(text, at, begin - at).append(value);
        at = end + 1;
    }
}

} // namespace Platform
