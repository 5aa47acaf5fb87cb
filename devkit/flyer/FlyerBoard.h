#pragma once

#include "devkit/flyer/NlFlyerControl.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace Flyers
{

struct Button
{
    std::wstring caption;
    std::optional<std::string> action; ///< nothing: closes the flyer
};

struct Flyer
{
    int32_t id;
    std::wstring title;
    std::wstring description;
    std::vector<Button> buttons;
    NlFlyerState state = NL_FLYER_CREATED;
};

/// Every flyer since the library was loaded. UI thread only.
class FlyerBoard
{
public:
    /// Made at its first use, and gone when the library is unloaded.
    static FlyerBoard& Instance();

    Flyer& Add(const wchar_t* title, const wchar_t* description);
    /// Null if there is no such flyer.
    Flyer* Find(NlFlyerHandle handle);
    static NlFlyerHandle HandleOf(const Flyer& flyer);

    void Visit(NlFlyerVisitor visitor, void* context) const;
    bool Press(int32_t id, uint32_t button);
    void SetActionHandler(NlFlyerActionHandler handler, void* context);

private:
    Flyer* FindById(std::size_t id);

    std::deque<Flyer> m_flyers; // by id from 1 on; a deque, so that a visitor may make further ones
    NlFlyerActionHandler m_handler = nullptr;
    void* m_handlerContext = nullptr;
};

} // namespace Flyers
