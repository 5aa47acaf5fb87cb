#include "platform/NamedMutex.h"

#include "platform/win32/SecurityAttributes.h"

namespace Platform
{

class NamedMutex::Object
{
public:
    explicit Object(HANDLE handle) : m_handle(handle) {}
    ~Object() { ::CloseHandle(m_handle); }
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    HANDLE Get() const { return m_handle; }

private:
    const HANDLE m_handle;
};

NamedMutex::NamedMutex() = default;
NamedMutex::~NamedMutex() = default;

std::uint32_t NamedMutex::Create(const std::wstring& name, const wchar_t* security)
{
    m_object.reset();
    SecurityAttributes attributes(security);
    const HANDLE handle = attributes.IsValid() ? ::CreateMutexW(attributes.Get(), FALSE, name.c_str()) : nullptr;
    if (!handle)
        return ::GetLastError();
    m_object = std::make_unique<Object>(handle);
    return 0;
}

std::uint32_t NamedMutex::Open(const std::wstring& name)
{
    m_object.reset();
    const HANDLE handle = ::OpenMutexW(SYNCHRONIZE, FALSE, name.c_str());
    if (!handle)
        return ::GetLastError();
    m_object = std::make_unique<Object>(handle);
    return 0;
}

bool NamedMutex::IsAccessDenied(std::uint32_t error)
{
    return error == ERROR_ACCESS_DENIED;
}

NamedMutex::Wait NamedMutex::Lock(std::uint32_t timeoutMs)
{
    return static_cast<Wait>(::WaitForSingleObject(m_object->Get(), timeoutMs));
}

void NamedMutex::Unlock()
{
    ::ReleaseMutex(m_object->Get());
}

std::uint64_t NamedMutex::Number() const
{
    return 0;
}

void NamedMutex::SetNumber(std::uint64_t) {}

} // namespace Platform
