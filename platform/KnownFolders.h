#pragma once

#include <string>

namespace Platform
{

/// The folders of programs' data, for all users and for this one; empty when the system does not tell. Without a
/// separator at the end; they need not exist.
///
/// On POSIX the environment variables VERIDAN_COMMON_APPDATA and VERIDAN_LOCAL_APPDATA name them, else they are
/// /var/lib and the user's XDG data folder.
std::wstring CommonAppData();
std::wstring LocalAppData();

/// The value of an environment variable; empty when it is not set.
std::wstring EnvironmentVariable(const std::wstring& name);

/// The text with each %NAME% replaced by the environment variable of that name; empty when one is not set. ProgramData
/// and LOCALAPPDATA are the folders above.
std::wstring ExpandEnvironment(const std::wstring& text);

} // namespace Platform
