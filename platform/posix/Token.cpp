#include "platform/Token.h"

#include <unistd.h>

namespace Platform
{

namespace
{

class PosixToken : public Token
{
public:
    bool IsMemberOfBuiltinGroup(KernelHandle token, std::uint32_t group) override
    {
        return !token && group == kAdministrators && ::geteuid() == 0;
    }

    bool IsUserMemberOfBuiltinGroup(KernelHandle token, std::uint32_t group) override
    {
        return IsMemberOfBuiltinGroup(token, group);
    }

    bool IsLowIntegrity() override { return false; }
};

} // namespace

template <>
Token& System<Token>()
{
    return Detail::NoDestructor<PosixToken>();
}

} // namespace Platform
