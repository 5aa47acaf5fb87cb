#pragma once

/* Notification flyers (library nl_flyer_api_32). Every call returns 0 on success, else an error number. Strings are
 * copied. UI thread only. */

#include "suite/SuiteAbi.h"

typedef struct NlFlyerTag* NlFlyerHandle;

/* A button's behaviour. `action` is the id of a UI trigger that the suite fires when the button is pressed, or null for
 * a button that closes the flyer. */
typedef struct NlFlyerButton
{
    uint32_t reserved0; /* 0 */
    const char* action; /* UTF-8 */
    uint32_t reserved1; /* 0 */
} NlFlyerButton;

#define NL_FLYER_FUNCTIONS(F)                                                                                          \
    F(int32_t, NlFlyer_CreateFlyer,                                                                                    \
      (int32_t reserved, const wchar_t* title, const wchar_t* description, int32_t kind, NlFlyerHandle* flyer))        \
    F(int32_t, NlFlyer_AddButton,                                                                                      \
      (NlFlyerHandle flyer, const wchar_t* caption, const NlFlyerButton* button, int32_t reserved))                    \
    F(int32_t, NlFlyer_ShowFlyer, (NlFlyerHandle flyer, int32_t placement, int32_t reserved))                          \
    F(int32_t, NlFlyer_CloseFlyer, (NlFlyerHandle flyer))

#if defined(NL_SUITE_PROTOTYPES)
NL_FLYER_FUNCTIONS(NL_SUITE_PROTOTYPE)
#endif
