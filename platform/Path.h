#pragma once

#include <string>
#include <string_view>

namespace Platform
{

extern const wchar_t kPathSeparator;         ///< The system's own.
extern const wchar_t* const kPathSeparators; ///< All that the system takes for one.

/// Whether a path leads from a root to its target, whatever the current folder and drive are.
bool IsAbsolutePath(std::wstring_view path);

/// `folder` + separator + `name`.
std::wstring JoinPath(std::wstring_view folder, std::wstring_view name);

/// The path up to, and without, its last separator; empty without one.
std::wstring ParentFolder(std::wstring_view path);

} // namespace Platform
