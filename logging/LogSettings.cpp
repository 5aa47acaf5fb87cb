#include "logging/LogSettings.h"

#include "platform/Format.h"
#include "platform/KnownFolders.h"
#include "platform/Path.h"
#include "platform/Registry.h"

#include <optional>
#include <utility>

namespace NlOrbLogging
{

namespace
{

using Platform::RegistryRoot;

constexpr const wchar_t* kLoggingKey = L"SOFTWARE\\Norlane\\ORB\\Logging";
constexpr const wchar_t* kShellFoldersKey = L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";
constexpr const wchar_t* kLocalLow = L"{A520A1A4-1780-4FF6-BD18-167343C5AF16}";

constexpr std::uint32_t kAbsent = 0xFFFFFFFF;
constexpr std::size_t kLongestRoot = 260;

std::wstring ReadFolder(RegistryRoot root, const wchar_t* key, const wchar_t* value)
{
    return Platform::Get<Platform::Registry>().ReadString(root, key, value).value_or(std::wstring());
}

std::wstring FirstFolder(RegistryRoot root, const wchar_t* shellFolder, const wchar_t* variable)
{
    std::wstring folder = ReadFolder(root, kLoggingKey, L"RootPath");
    if (folder.empty())
        folder = ReadFolder(root, kShellFoldersKey, shellFolder);
    return !folder.empty() ? folder : Platform::ExpandEnvironment(variable);
}

std::wstring PerUserFolder(bool lowIntegrity)
{
    const std::wstring low =
        lowIntegrity ? ReadFolder(RegistryRoot::User, kShellFoldersKey, kLocalLow) : std::wstring();
    return !low.empty() ? low : FirstFolder(RegistryRoot::User, L"Local AppData", L"%LOCALAPPDATA%");
}

} // namespace

LogSettings::LogSettings(std::wstring component, std::wstring module)
    : m_component(std::move(component)), m_module(std::move(module))
{}

std::uint32_t LogSettings::ReadDword(const wchar_t* value, std::uint32_t fallback) const
{
    const std::wstring keys[] = {
        Platform::FormatString(L"%s\\%s\\%s", kLoggingKey, m_component.c_str(), m_module.c_str()),
        Platform::FormatString(L"%s\\%s", kLoggingKey, m_component.c_str()),
        kLoggingKey,
    };
    for (const std::wstring& key : keys)
    {
        const auto number = Platform::Get<Platform::Registry>().ReadDword(RegistryRoot::Machine, key.c_str(), value);
        if (number.value_or(kAbsent) != kAbsent)
            return *number;
    }
    return fallback;
}

std::wstring LogRoot(bool perUser, bool lowIntegrity)
{
    const std::wstring folder =
        perUser ? PerUserFolder(lowIntegrity) : FirstFolder(RegistryRoot::Machine, L"Common AppData", L"%ProgramData%");
    if (folder.empty())
        return {};
    std::wstring root = Platform::JoinPath(folder, L"Norlane");
    return root.size() <= kLongestRoot ? root : std::wstring();
}

} // namespace NlOrbLogging
