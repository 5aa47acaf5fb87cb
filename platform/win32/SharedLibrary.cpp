#include "platform/SharedLibrary.h"

#include "platform/Path.h"
#include "platform/win32/Win32.h"

#include <utility>

namespace Platform
{

std::uint32_t SharedLibrary::Load(const std::wstring& path)
{
    Unload();
    if (!IsAbsolutePath(path))
        return ErrorBadPathname;
    // What it imports comes from its own folder, the program's or the system's: never from the current folder or PATH.
    constexpr DWORD searchedFolders = LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS;
    m_module = ::LoadLibraryExW(path.c_str(), nullptr, searchedFolders);
    return m_module != nullptr ? 0 : ::GetLastError();
}

void SharedLibrary::Unload()
{
    if (m_module != nullptr)
        ::FreeLibrary(static_cast<HMODULE>(std::exchange(m_module, nullptr)));
}

void* SharedLibrary::Find(const char* function) const
{
    return m_module != nullptr ? reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(m_module), function))
                               : nullptr;
}

const char* SharedLibrary::Suffix()
{
    return ".dll";
}

std::wstring SharedLibrary::PathOf(const void* code)
{
    constexpr DWORD flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    constexpr std::size_t longestPath = 0x8000;
    HMODULE module = nullptr;
    if (!::GetModuleHandleExW(flags, static_cast<const wchar_t*>(code), &module))
        return {};
    std::wstring path(longestPath, L'\0');
    path.resize(::GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

} // namespace Platform
