#pragma once

#include "delay_load/SuiteTable.h"
#include "suite/OrbStrata.h"

/// The settings store's functions under their own names. See delay_load/SuiteTable.h.
struct OrbStrataTable
{
    NL_ORB_STRATA_FUNCTIONS(NL_SUITE_ENTRY)
};

extern OrbStrataTable g_orbStrata;

#define NL_SUITE_TABLE g_orbStrata
NL_ORB_STRATA_FUNCTIONS(NL_SUITE_NAME)
#undef NL_SUITE_TABLE
