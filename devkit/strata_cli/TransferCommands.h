#pragma once

#include "devkit/strata_cli/Commands.h"
#include "devkit/strata_cli/StoreScope.h"

namespace StrataCli
{

/// The commands that move a whole scope; their operand is a file.
ExitCode ExportScope(StoreScope& scope, const Arguments& arguments);
ExitCode ImportScope(StoreScope& scope, const Arguments& arguments);
/// Opens the scopes that it writes itself: the defaults go to both.
ExitCode SeedScopes(const Arguments& arguments);

} // namespace StrataCli
