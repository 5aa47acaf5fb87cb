#pragma once

#include "settings/binding/Listener.h"
#include "settings/binding/Scope.h"
#include "settings/binding/TypeName.h"

#include <memory>
#include <string>

namespace StrataSettings
{

/// A scope with a tree of this type.
template <class Tree>
class ScopedSettings final : public Scope
{
public:
    /// `sid` is "S-1-5-18" for the machine, a user's SID, or empty for the calling user. `elevated` asks the user.
    ScopedSettings(const std::string& sid, const wchar_t* storeArgument, const wchar_t* clientId, bool elevated)
        : Scope(std::make_unique<Tree>(), std::make_unique<Listener<ScopedSettings>>(*this), LogName(), sid,
                storeArgument, clientId, elevated)
    {}

    Tree& Settings() noexcept { return static_cast<Tree&>(Scope::Settings()); }
    const Tree& Settings() const noexcept { return static_cast<const Tree&>(Scope::Settings()); }

    /// What the log calls this type.
    static std::wstring LogName()
    {
        return std::wstring(L"StrataSettings::ScopedSettings<class ") + kTypeName<Tree> + L">";
    }
};

} // namespace StrataSettings
