#pragma once

#include "suite/NlFlyer.h"
#include "util/SuiteTable.h"

/// The flyer functions under their own names. See util/SuiteTable.h.
struct NlFlyerTable
{
    NL_FLYER_FUNCTIONS(NL_SUITE_ENTRY)
};

extern NlFlyerTable g_nlFlyer;

#define NL_SUITE_TABLE g_nlFlyer
NL_FLYER_FUNCTIONS(NL_SUITE_NAME)
#undef NL_SUITE_TABLE
