#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace Platform
{

/// A library loaded at run time; unloaded by the destructor.
class SharedLibrary
{
public:
    SharedLibrary() = default;
    SharedLibrary(SharedLibrary&& other) noexcept : m_module(std::exchange(other.m_module, nullptr)) {}
    SharedLibrary& operator=(SharedLibrary&& other) noexcept
    {
        std::swap(m_module, other.m_module);
        return *this;
    }
    ~SharedLibrary() { Unload(); }

    /// Loads the library of this absolute path. Returns 0 or the system's error number; a path that is not absolute is
    /// kErrorBadPathname. What the library itself needs is looked for beside it, not in the current folder.
    std::uint32_t Load(const std::wstring& path);
    void Unload();
    bool IsLoaded() const { return m_module != nullptr; }

    /// Null: there is no such function.
    void* Find(const char* function) const;

    static constexpr std::uint32_t kErrorModuleNotFound = 126;
    static constexpr std::uint32_t kErrorFunctionNotFound = 127;
    static constexpr std::uint32_t kErrorBadPathname = 161;

    /// The suffix of library files, ".dll" or ".so".
    static const char* Suffix();

    /// The file that holds the code of this program or library; empty when the system does not tell.
    static std::wstring PathOf(const void* code);

private:
    void* m_module = nullptr;
};

} // namespace Platform
