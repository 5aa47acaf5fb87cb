#include "platform/SharedLibrary.h"

#include "platform/LastError.h"
#include "platform/Path.h"
#include "platform/win32/Win32.h"

#include <utility>

namespace Platform
{

namespace
{

/// As long as it lives, the system answers this thread's failures and shows the user no box for them, which would wait
/// on the thread for somebody to close it. The last error stays what the failure made it.
class ErrorBoxesOff
{
public:
    ErrorBoxesOff()
    {
        constexpr DWORD kOff = SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX;
        ::SetThreadErrorMode(::GetThreadErrorMode() | kOff, &m_before);
    }
    ~ErrorBoxesOff()
    {
        const LastErrorGuard guard;
        ::SetThreadErrorMode(m_before, nullptr);
    }
    ErrorBoxesOff(const ErrorBoxesOff&) = delete;
    ErrorBoxesOff& operator=(const ErrorBoxesOff&) = delete;

private:
    DWORD m_before = 0;
};

} // namespace

std::uint32_t SharedLibrary::Load(const std::wstring& path)
{
    Unload();
    if (!IsAbsolutePath(path))
        return kErrorBadPathname;
    // What it imports comes from its own folder, the program's or the system's: never from the current folder or PATH.
    constexpr DWORD kSearchedFolders = LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS;
    const ErrorBoxesOff errorBoxesOff;
    m_module = ::LoadLibraryExW(path.c_str(), nullptr, kSearchedFolders);
    return m_module ? 0 : ::GetLastError();
}

void SharedLibrary::Unload()
{
    if (m_module)
        ::FreeLibrary(static_cast<HMODULE>(std::exchange(m_module, nullptr)));
}

void* SharedLibrary::Find(const char* function) const
{
    return m_module ? reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(m_module), function)) : nullptr;
}

const char* SharedLibrary::Suffix()
{
    return ".dll";
}

std::wstring SharedLibrary::PathOf(const void* code)
{
    constexpr DWORD kFlags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    constexpr std::size_t kLongestPath = 0x8000;
    HMODULE module = nullptr;
    if (!::GetModuleHandleExW(kFlags, static_cast<const wchar_t*>(code), &module))
        return {};
    std::wstring path(kLongestPath, L'\0');
    path.resize(::GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

} // namespace Platform
