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

/// The library's functions, by number.
enum class Function : uint8_t
{
#define FLYER_NUMBER(result, name, parameters) name,
    NL_FLYER_FUNCTIONS(FLYER_NUMBER)
#undef FLYER_NUMBER
};

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

/// Every flyer since the library was loaded, and how its functions were told to fail. UI thread only.
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
    bool Press(int32_t flyer, uint32_t button);
    void SetActionHandler(NlFlyerActionHandler handler, void* context);

    /// False: there is no such function. Code 0 takes the function's faults back.
    bool SetFault(const char* function, int32_t code, uint32_t count);
    void ClearFaults() { m_faults.clear(); }
    /// What this call has to answer instead of doing its work; 0: nothing.
    int32_t TakeFault(Function function);

private:
    struct Fault
    {
        Function function;
        int32_t code;
        uint32_t left; ///< 0: does not end
    };

    Flyer* FindById(std::size_t id);

    std::deque<Flyer> m_flyers; // by id from 1 on; a deque, so that a visitor may make further ones
    std::vector<Fault> m_faults;
    NlFlyerActionHandler m_handler = nullptr;
    void* m_handlerContext = nullptr;
};

} // namespace Flyers
