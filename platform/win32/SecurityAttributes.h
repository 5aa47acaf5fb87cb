#pragma once

#include "platform/win32/Win32.h"

namespace Platform
{

/// Security attributes made from an SDDL text, for an object that is not inherited. Null text: the system's default.
class SecurityAttributes
{
public:
    explicit SecurityAttributes(const wchar_t* sddl);
    ~SecurityAttributes();
    SecurityAttributes(const SecurityAttributes&) = delete;
    SecurityAttributes& operator=(const SecurityAttributes&) = delete;

    /// False: the text could not be converted, GetLastError() tells the reason. An object must then not be made, as it
    /// would be open to more than was meant.
    bool IsValid() const { return m_valid; }

    SECURITY_ATTRIBUTES* Get() { return m_attributes.lpSecurityDescriptor ? &m_attributes : nullptr; }

private:
    SECURITY_ATTRIBUTES m_attributes{sizeof(SECURITY_ATTRIBUTES), nullptr, FALSE};
    bool m_valid = true;
};

} // namespace Platform
