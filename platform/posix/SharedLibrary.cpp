#include "platform/SharedLibrary.h"

#include "platform/Path.h"
#include "text/Utf.h"

#include <dlfcn.h>

#include <cstdlib>
#include <memory>
#include <utility>

namespace Platform
{

std::uint32_t SharedLibrary::Load(const std::wstring& path)
{
    Unload();
    if (!IsAbsolutePath(path))
        return kErrorBadPathname;
    m_module = ::dlopen(Text::ToUtf8(path).c_str(), RTLD_NOW | RTLD_LOCAL);
    return m_module ? 0 : kErrorModuleNotFound;
}

void SharedLibrary::Unload()
{
    if (m_module)
        ::dlclose(std::exchange(m_module, nullptr));
}

void* SharedLibrary::Find(const char* function) const
{
    return m_module ? ::dlsym(m_module, function) : nullptr;
}

const char* SharedLibrary::Suffix()
{
    return ".so";
}

std::wstring SharedLibrary::PathOf(const void* code)
{
    Dl_info info{};
    if (::dladdr(code, &info) == 0 || !info.dli_fname)
        return {};
    // The program itself goes by the name that it was started with, which may be relative.
    std::unique_ptr<char, decltype(&std::free)> path(
        ::realpath(info.dli_fname[0] == '/' ? info.dli_fname : "/proc/self/exe", nullptr), &std::free);
    return path ? Text::FromUtf8(path.get()) : std::wstring();
}

} // namespace Platform
