#include "platform/SharedLibrary.h"

#include "platform/Path.h"
#include "platform/Text.h"

#include <dlfcn.h>

#include <utility>

namespace Platform
{

SharedLibrary::SharedLibrary(SharedLibrary&& other) noexcept : m_module(std::exchange(other.m_module, nullptr)) {}

SharedLibrary& SharedLibrary::operator=(SharedLibrary&& other) noexcept
{
    std::swap(m_module, other.m_module);
    return *this;
}

SharedLibrary::~SharedLibrary()
{
    Unload();
}

std::uint32_t SharedLibrary::Load(const std::wstring& path)
{
    Unload();
    if (!IsAbsolutePath(path))
    {
        return ErrorBadPathname;
    }
    m_module = ::dlopen(ToUtf8(path).c_str(), RTLD_NOW | RTLD_LOCAL);
    return m_module != nullptr ? 0 : ErrorModuleNotFound;
}

void SharedLibrary::Unload()
{
    if (m_module != nullptr)
    {
        ::dlclose(std::exchange(m_module, nullptr));
    }
}

void* SharedLibrary::Find(const char* function) const
{
    return m_module != nullptr ? ::dlsym(m_module, function) : nullptr;
}

const char* SharedLibrary::Suffix()
{
    return ".so";
}

std::wstring SharedLibrary::PathOf(const void* code)
{
    Dl_info info{};
    return ::dladdr(code, &info) != 0 && info.dli_fname != nullptr ? FromUtf8(info.dli_fname) : std::wstring();
}

} // namespace Platform
