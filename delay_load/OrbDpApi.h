#pragma once

#include "delay_load/SuiteTable.h"
#include "suite/OrbDpApi.h"

/// The metrics functions under their own names. See delay_load/SuiteTable.h.
struct OrbDpTable
{
    NL_ORB_DP_API_FUNCTIONS(NL_SUITE_ENTRY)
};

extern OrbDpTable g_orbDp;

#define NL_SUITE_TABLE g_orbDp
NL_ORB_DP_API_FUNCTIONS(NL_SUITE_NAME)
#undef NL_SUITE_TABLE
