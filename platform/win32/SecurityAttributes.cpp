#include "platform/win32/SecurityAttributes.h"

#include <sddl.h>

namespace Platform
{

SecurityAttributes::SecurityAttributes(const wchar_t* sddl)
{
    if (sddl)
    {
        m_valid = ::ConvertStringSecurityDescriptorToSecurityDescriptorW(
                      sddl, SDDL_REVISION_1, &m_attributes.lpSecurityDescriptor, nullptr) != FALSE;
    }
}

SecurityAttributes::~SecurityAttributes()
{
    ::LocalFree(m_attributes.lpSecurityDescriptor);
}

} // namespace Platform
