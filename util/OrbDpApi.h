#pragma once

#include "suite/OrbDpApi.h"
#include "util/SuiteTable.h"

/// The metrics functions under their own names. See util/SuiteTable.h.
struct OrbDpTable
{
    NL_ORB_DP_API_FUNCTIONS(NL_SUITE_ENTRY)
};

extern OrbDpTable g_orbDp;

#define NL_SUITE_TABLE g_orbDp
NL_ORB_DP_API_FUNCTIONS(NL_SUITE_NAME)
#undef NL_SUITE_TABLE
