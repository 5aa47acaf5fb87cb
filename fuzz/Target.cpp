#include "fuzz/Target.h"

#include <cstdio>
#include <cstdlib>

namespace
{

std::vector<Target>& Targets()
{
    static std::vector<Target> s_targets;
    return s_targets;
}

} // namespace

Target::Target(const char* name, Run run) : m_name(name), m_run(run)
{
    Targets().push_back(*this);
}

const std::vector<Target>& Target::All()
{
    return Targets();
}

void Require(bool kept, const char* promise)
{
    if (kept)
        return;
    std::fprintf(stderr, "Not kept: %s\n", promise);
    std::fflush(stderr);
    std::abort();
}
