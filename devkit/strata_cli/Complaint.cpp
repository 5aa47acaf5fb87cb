#include "devkit/strata_cli/Complaint.h"

#include <cstdio>

namespace StrataCli
{

ExitCode Complain(ExitCode code, const std::string& sentence)
{
    std::fprintf(stderr, "strata: %s\n", sentence.c_str());
    return code;
}

ExitCode Complain(const StoreScope& scope)
{
    return Complain(Failed, Explain(scope.Result()));
}

} // namespace StrataCli
