#pragma once

#include "delay_load/SuiteTable.h"
#include "suite/NlFlyer.h"

/// The flyer functions under their own names. See delay_load/SuiteTable.h.
struct NlFlyerTable
{
    NL_FLYER_FUNCTIONS(NL_SUITE_ENTRY)
};

extern NlFlyerTable g_nlFlyer;

#define NL_SUITE_TABLE g_nlFlyer
NL_FLYER_FUNCTIONS(NL_SUITE_NAME)
#undef NL_SUITE_TABLE
