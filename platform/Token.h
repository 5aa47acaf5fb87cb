#pragma once

#include "platform/KernelHandle.h"
#include "platform/Service.h"

#include <cstdint>

namespace Platform
{

/// What a process may do. Any thread.
class Token
{
public:
    /// The group of administrators below BUILTIN.
    static constexpr std::uint32_t kAdministrators = 544;

    virtual ~Token() = default;

    /// Whether what runs with a token has the rights of the group S-1-5-32-`group`; null: this process. On POSIX only
    /// root belongs to a group, to kAdministrators, and there are no tokens of others.
    virtual bool IsMemberOfBuiltinGroup(KernelHandle token, std::uint32_t group) = 0;

    /// The same, and also whether the token's user would have them after an elevation: an administrator who runs
    /// unelevated has the group for denying only.
    virtual bool IsUserMemberOfBuiltinGroup(KernelHandle token, std::uint32_t group) = 0;

    /// Whether this process runs at low integrity (label 0x1000). Never on POSIX.
    virtual bool IsLowIntegrity() = 0;
};

template <>
Token& System<Token>();

} // namespace Platform
