#include "devkit/flyer/FlyerBoard.h"

using Flyers::Flyer;
using Flyers::FlyerBoard;
using Flyers::Function;

namespace
{

constexpr int32_t InvalidHandle = 6;
constexpr int32_t InvalidArgument = 87;

/// Finds the flyer that a function works on. Answers the function's result: 0 if it may go on.
int32_t Begin(Function function, NlFlyerHandle handle, Flyer*& flyer)
{
    const int32_t fault = FlyerBoard::Instance().TakeFault(function);
    flyer = FlyerBoard::Instance().Find(handle);
    return fault != 0 ? fault : flyer == nullptr || flyer->state == NL_FLYER_CLOSED ? InvalidHandle : 0;
}

} // namespace

int32_t NlFlyer_CreateFlyer(int32_t /*reserved*/, const wchar_t* title, const wchar_t* description, int32_t /*kind*/,
                            NlFlyerHandle* flyer)
{
    if (const int32_t fault = FlyerBoard::Instance().TakeFault(Function::NlFlyer_CreateFlyer); fault != 0)
        return fault;
    if (flyer == nullptr)
        return InvalidArgument;
    *flyer = FlyerBoard::HandleOf(FlyerBoard::Instance().Add(title, description));
    return 0;
}

int32_t NlFlyer_AddButton(NlFlyerHandle handle, const wchar_t* caption, const NlFlyerButton* button,
                          int32_t /*reserved*/)
{
    Flyer* flyer = nullptr;
    if (const int32_t error = Begin(Function::NlFlyer_AddButton, handle, flyer); error != 0)
        return error;
    if (caption == nullptr || button == nullptr)
        return InvalidArgument;
    flyer->buttons.push_back(
        {caption, button->action == nullptr ? std::nullopt : std::optional<std::string>(button->action)});
    return 0;
}

int32_t NlFlyer_ShowFlyer(NlFlyerHandle handle, int32_t /*placement*/, int32_t /*reserved*/)
{
    Flyer* flyer = nullptr;
    const int32_t error = Begin(Function::NlFlyer_ShowFlyer, handle, flyer);
    if (error == 0)
        flyer->state = NL_FLYER_SHOWN;
    return error;
}

int32_t NlFlyer_CloseFlyer(NlFlyerHandle handle)
{
    Flyer* flyer = nullptr;
    const int32_t error = Begin(Function::NlFlyer_CloseFlyer, handle, flyer);
    if (error == 0)
        flyer->state = NL_FLYER_CLOSED;
    return error;
}

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
    return FlyerBoard::Instance().SetFault(function, code, count);
}

void NlFlyerControl_ClearFaults(void)
{
    FlyerBoard::Instance().ClearFaults();
}
