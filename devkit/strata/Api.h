#pragma once

#include "suite/OrbStrata.h"

/// What the store's functions do. The library exports them with its fault injector before each: see Edge.cpp.
namespace Strata::Api
{

#define STRATA_FUNCTION(result, name, parameters) result name parameters;
NL_ORB_STRATA_FUNCTIONS(STRATA_FUNCTION)
#undef STRATA_FUNCTION

} // namespace Strata::Api
