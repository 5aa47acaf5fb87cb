#pragma once

#include "platform/Service.h"

#include <cstdint>
#include <optional>
#include <string>

namespace Platform
{

enum class RegistryRoot
{
    Machine, ///< HKEY_LOCAL_MACHINE
    User     ///< HKEY_CURRENT_USER
};

/// The system's registry, read only, in its 64-bit view. A key is a path with backslashes, a value lies under a name in
/// a key; both compare without regard to case. An absent key, an absent value and a value of another type are alike.
/// Any thread.
///
/// On POSIX the registry is two files in INI form as QSettings writes it, machine.ini and user.ini, below the folder
/// that the environment variable VERIDAN_REGISTRY_DIR names, else /etc/norlane and the user's configuration folder. The
/// group is the key's path with slashes for backslashes, the entry is the value's name; a number is decimal or 0x...
class Registry
{
public:
    virtual ~Registry() = default;

    virtual std::optional<std::uint32_t> ReadDword(RegistryRoot root, const wchar_t* key, const wchar_t* value) = 0;
    virtual std::optional<std::wstring> ReadString(RegistryRoot root, const wchar_t* key, const wchar_t* value) = 0;
};

template <>
Registry& System<Registry>();

} // namespace Platform
