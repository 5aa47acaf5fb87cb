#include "devkit/flyer/FlyerBoard.h"

namespace Flyers
{

namespace
{

std::wstring StringOf(const wchar_t* text)
{
    return text ? std::wstring(text) : std::wstring();
}

} // namespace

FlyerBoard& FlyerBoard::Instance()
{
    static FlyerBoard s_board;
    return s_board;
}

Flyer& FlyerBoard::Add(const wchar_t* title, const wchar_t* description)
{
    const auto id = static_cast<int32_t>(m_flyers.size() + 1);
    return m_flyers.emplace_back(Flyer{id, StringOf(title), StringOf(description), {}, NL_FLYER_CREATED});
}

Flyer* FlyerBoard::Find(NlFlyerHandle handle)
{
    return FindById(reinterpret_cast<uintptr_t>(handle));
}

Flyer* FlyerBoard::FindById(std::size_t id)
{
    return id >= 1 && id <= m_flyers.size() ? &m_flyers[id - 1] : nullptr;
}

NlFlyerHandle FlyerBoard::HandleOf(const Flyer& flyer)
{
    return reinterpret_cast<NlFlyerHandle>(static_cast<uintptr_t>(flyer.id));
}

void FlyerBoard::Visit(NlFlyerVisitor visitor, void* context) const
{
    const std::size_t count = m_flyers.size();
    for (std::size_t i = 0; i < count; ++i)
    {
        const Flyer flyer = m_flyers[i];
        std::vector<NlFlyerButtonView> buttons;
        for (const Button& button : flyer.buttons)
            buttons.push_back({button.caption.c_str(), button.action ? button.action->c_str() : nullptr});
        const NlFlyerView view{flyer.id,
                               flyer.title.c_str(),
                               flyer.description.c_str(),
                               buttons.data(),
                               static_cast<uint32_t>(buttons.size()),
                               flyer.state};
        visitor(context, &view);
    }
}

bool FlyerBoard::Press(int32_t id, uint32_t button)
{
    Flyer* flyer = id < 1 ? nullptr : FindById(static_cast<std::size_t>(id));
    if (!flyer || flyer->state != NL_FLYER_SHOWN || button >= flyer->buttons.size())
        return false;
    const auto action = flyer->buttons[button].action;
    if (!action)
        flyer->state = NL_FLYER_CLOSED;
    else if (m_handler != nullptr)
        m_handler(m_handlerContext, action->c_str());
    return true;
}

void FlyerBoard::SetActionHandler(NlFlyerActionHandler handler, void* context)
{
    m_handler = handler;
    m_handlerContext = context;
}

} // namespace Flyers
