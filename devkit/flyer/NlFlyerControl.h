#pragma once

/* What the development kit adds to the flyer library: looking at flyers, pressing their buttons, and faults. UI thread
 * only. */

#include "devkit/faults/SuiteFault.h"
#include "suite/NlFlyer.h"

typedef enum NlFlyerState
{
    NL_FLYER_CREATED = 0,
    NL_FLYER_SHOWN = 1,
    NL_FLYER_CLOSED = 2
} NlFlyerState;

typedef struct NlFlyerButtonView
{
    const wchar_t* caption;
    const char* action; /* null: closes the flyer */
} NlFlyerButtonView;

typedef struct NlFlyerView
{
    int32_t id; /* counted from 1 */
    const wchar_t* title;
    const wchar_t* description;
    const NlFlyerButtonView* buttons;
    uint32_t buttonCount;
    NlFlyerState state;
} NlFlyerView;

typedef void(NL_SUITE_CALL* NlFlyerVisitor)(void* context, const NlFlyerView* flyer);
typedef void(NL_SUITE_CALL* NlFlyerActionHandler)(void* context, const char* action);

#define NL_FLYER_CONTROL_FUNCTIONS(F)                                                                                  \
    /* Every flyer since the library was loaded, in order of creation. */                                              \
    F(void, NlFlyerControl_Flyers, (NlFlyerVisitor visitor, void* context))                                            \
    /* Who fires a pressed button's trigger. */                                                                        \
    F(void, NlFlyerControl_SetActionHandler, (NlFlyerActionHandler handler, void* context))                            \
    /* Presses a button of a shown flyer: fires its action, or closes the flyer. False: no such flyer or button, or    \
     * the flyer is not shown. */                                                                                      \
    F(bool, NlFlyerControl_Press, (int32_t flyer, uint32_t button))                                                    \
    /* The next `count` calls (0 = every call) of `function` (C name) answer `code`. False: there is no such function. \
     */                                                                                                                \
    F(bool, NlFlyerControl_SetFault, (const char* function, int32_t code, uint32_t count))                             \
    F(void, NlFlyerControl_ClearFaults, (void))                                                                        \
    /* The faults that hold, in the order in which they were set. */                                                   \
    F(void, NlFlyerControl_Faults, (SuiteFaultVisitor visitor, void* context))

#if defined(NL_SUITE_PROTOTYPES)
NL_FLYER_CONTROL_FUNCTIONS(NL_SUITE_PROTOTYPE)
#endif
