#include "platform/KnownFolders.h"

namespace Platform
{

std::wstring ExpandEnvironment(const std::wstring& text)
{
    const auto valueOf = [](const std::wstring& name) {
        if (name == L"ProgramData")
            return CommonAppData();
        return name == L"LOCALAPPDATA" ? LocalAppData() : EnvironmentVariable(name);
    };
    std::wstring expanded;
    std::size_t at = 0;
    for (;;)
    {
        const auto begin = text.find(L'%', at);
        const auto end = begin == std::wstring::npos ? begin : text.find(L'%', begin + 1);
        if (end == std::wstring::npos)
            return expanded.append(text, at, std::wstring::npos);
        const std::wstring value = valueOf(text.substr(begin + 1, end - begin - 1));
        if (value.empty())
            return {};
        expanded.append(text, at, begin - at).append(value);
        at = end + 1;
    }
}

} // namespace Platform
