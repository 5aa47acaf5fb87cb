#include "settings/model/Invariant.h"

namespace Settings
{

void CheckInvariant(const FunctionLog& log, bool holds, const wchar_t* rule)
{
    if (!holds)
        LOG(log, 1, L"%ls, assertion failed: %ls", rule);
}

} // namespace Settings
