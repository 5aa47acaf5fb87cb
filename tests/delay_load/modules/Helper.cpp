#include "suite/SuiteAbi.h"

NL_SUITE_PROTOTYPE(int32_t, Helper_Answer, (void))

int32_t NL_SUITE_CALL Helper_Answer()
{
    return 4711;
}
