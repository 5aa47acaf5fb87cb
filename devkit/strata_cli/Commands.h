#pragma once

#include "devkit/strata_cli/Arguments.h"

namespace StrataCli
{

/// What the program ends with.
enum ExitCode
{
    Done = 0,
    Failed = 1,   ///< the store or a file could not be read or written
    Misused = 2,  ///< the command line makes no sense
    NotFound = 3, ///< there is no such key, or it holds no value
    Refused = 4   ///< the value is none of its type, or the file is not well-formed
};

/// Runs the command that the arguments name.
ExitCode Run(const Arguments& arguments);

} // namespace StrataCli
