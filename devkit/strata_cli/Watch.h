#pragma once

#include "devkit/strata_cli/StoreScope.h"

#include <string>

namespace StrataCli
{

/// Prints the changes of keys that begin with `prefix`, a line each, until the program is interrupted. False: the store
/// failed; see the scope's result.
bool Watch(StoreScope& scope, const std::string& prefix, bool json);

} // namespace StrataCli
