#pragma once

#include "devkit/strata_cli/Commands.h"
#include "devkit/strata_cli/StoreScope.h"

#include <string>

namespace StrataCli
{

/// Says on standard error what went wrong, and answers `code`.
ExitCode Complain(ExitCode code, const std::string& sentence);
/// The same for a call of the store that failed.
ExitCode Complain(const StoreScope& scope);

} // namespace StrataCli
