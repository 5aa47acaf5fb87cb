#pragma once

#include "devkit/strata/Database.h"

#include <memory>
#include <string>

namespace Strata::Schema
{

/// Opens a store's file, makes its folders and tables if they are missing, and refuses a file that is not a store: it
/// is left as it is. Null: `error` is a sentence that says why.
std::unique_ptr<Database> Open(const std::string& path, std::string& error);

} // namespace Strata::Schema
