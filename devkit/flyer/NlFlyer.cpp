#include "devkit/faults/Edge.h"
#include "devkit/flyer/FlyerBoard.h"

using namespace Flyers;

namespace
{

constexpr int32_t kInvalidHandle = 6;
constexpr int32_t kInvalidArgument = 87;

/// Finds the flyer that a function works on. Answers the function's result: 0 if it may go on.
int32_t Find(NlFlyerHandle handle, Flyer*& flyer)
{
    flyer = FlyerBoard::Instance().Find(handle);
    return !flyer || flyer->state == NL_FLYER_CLOSED ? kInvalidHandle : 0;
}

} // namespace

namespace Flyers::Api
{

#define FLYER_FUNCTION(result, name, parameters) static result name parameters;
NL_FLYER_FUNCTIONS(FLYER_FUNCTION)
#undef FLYER_FUNCTION

int32_t NlFlyer_CreateFlyer(int32_t /*reserved*/, const wchar_t* title, const wchar_t* description, int32_t /*kind*/,
                            NlFlyerHandle* flyer)
{
    if (!flyer)
        return kInvalidArgument;
    *flyer = FlyerBoard::HandleOf(FlyerBoard::Instance().Add(title, description));
    return 0;
}

int32_t NlFlyer_AddButton(NlFlyerHandle handle, const wchar_t* caption, const NlFlyerButton* button,
                          int32_t /*reserved*/)
{
    Flyer* flyer = nullptr;
    if (const int32_t error = Find(handle, flyer); error != 0)
        return error;
    if (!caption || !button)
        return kInvalidArgument;
    flyer->buttons.push_back({caption, button->action ? std::optional<std::string>(button->action) : std::nullopt});
    return 0;
}

int32_t NlFlyer_ShowFlyer(NlFlyerHandle handle, int32_t /*placement*/, int32_t /*reserved*/)
{
    Flyer* flyer = nullptr;
    const int32_t error = Find(handle, flyer);
    if (error == 0)
        flyer->state = NL_FLYER_SHOWN;
    return error;
}

int32_t NlFlyer_CloseFlyer(NlFlyerHandle handle)
{
    Flyer* flyer = nullptr;
    const int32_t error = Find(handle, flyer);
    if (error == 0)
        flyer->state = NL_FLYER_CLOSED;
    return error;
}

} // namespace Flyers::Api

namespace
{

struct Library : SuiteFaults::PlainLibrary
{
    static SuiteFaults::FaultInjector& Faults()
    {
        static SuiteFaults::FaultInjector s_faults({NL_FLYER_FUNCTIONS(SUITE_FAULT_NAME)});
        return s_faults;
    }
};

enum Number : std::size_t
{
    NL_FLYER_FUNCTIONS(SUITE_FAULT_NUMBER)
};

} // namespace

// NOLINTBEGIN(readability-identifier-naming)
#define ARGUMENTS_NlFlyer_CreateFlyer (reserved, title, description, kind, flyer)
#define ARGUMENTS_NlFlyer_AddButton (flyer, caption, button, reserved)
#define ARGUMENTS_NlFlyer_ShowFlyer (flyer, placement, reserved)
#define ARGUMENTS_NlFlyer_CloseFlyer (flyer)
// NOLINTEND(readability-identifier-naming)

NL_FLYER_FUNCTIONS(SUITE_FAULT_EXPORT)

void NlFlyerControl_Flyers(NlFlyerVisitor visitor, void* context)
{
    FlyerBoard::Instance().Visit(visitor, context);
}

void NlFlyerControl_SetActionHandler(NlFlyerActionHandler handler, void* context)
{
    FlyerBoard::Instance().SetActionHandler(handler, context);
}

bool NlFlyerControl_Press(int32_t flyer, uint32_t button)
{
    return FlyerBoard::Instance().Press(flyer, button);
}

bool NlFlyerControl_SetFault(const char* function, int32_t code, uint32_t count)
{
    auto& faults = Library::Faults();
    return function && (code == 0 ? faults.Remove(function, nullptr)
                                  : faults.Add({function, nullptr, static_cast<uint32_t>(code), 1, count, false}));
}

void NlFlyerControl_ClearFaults(void)
{
    Library::Faults().Clear();
}

void NlFlyerControl_Faults(SuiteFaultVisitor visitor, void* context)
{
    Library::Faults().Visit(visitor, context);
}
