#include "platform/Registry.h"

#include "platform/win32/Win32.h"

namespace Platform
{

namespace
{

/// A key of the 64-bit view, open for reading; null when it is absent.
class Key
{
public:
    Key(RegistryRoot root, const wchar_t* path)
    {
        const HKEY parent = root == RegistryRoot::Machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
        ::RegOpenKeyExW(parent, path, 0, KEY_QUERY_VALUE | KEY_WOW64_64KEY, &m_key);
    }
    ~Key()
    {
        if (m_key)
            ::RegCloseKey(m_key);
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;

    bool Read(const wchar_t* value, DWORD type, void* data, DWORD& size) const
    {
        return m_key && ::RegGetValueW(m_key, nullptr, value, type, nullptr, data, &size) == ERROR_SUCCESS;
    }

private:
    HKEY m_key = nullptr;
};

class WindowsRegistry : public Registry
{
public:
    std::optional<std::uint32_t> ReadDword(RegistryRoot root, const wchar_t* key, const wchar_t* value) override
    {
        DWORD number = 0;
        DWORD size = sizeof(number);
        const bool read = Key(root, key).Read(value, RRF_RT_REG_DWORD, &number, size) && size == sizeof(number);
        return read ? std::optional<std::uint32_t>(number) : std::nullopt;
    }

    std::optional<std::wstring> ReadString(RegistryRoot root, const wchar_t* key, const wchar_t* value) override
    {
        const Key open(root, key);
        DWORD size = 0;
        if (!open.Read(value, RRF_RT_REG_SZ, nullptr, size))
            return std::nullopt;
        std::wstring text(size / sizeof(wchar_t) + 1, L'\0');
        size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
        if (!open.Read(value, RRF_RT_REG_SZ, text.data(), size))
            return std::nullopt;
        return std::wstring(text.c_str());
    }
};

} // namespace

template <>
Registry& System<Registry>()
{
    return Detail::NoDestructor<WindowsRegistry>();
}

} // namespace Platform
