#pragma once

#include "logging/LogName.h"
#include "settings/binding/Listener.h"
#include "settings/binding/Scope.h"
#include "settings/binding/TypeName.h"

#include <memory>
#include <string>

namespace StrataSettings
{

template <class Tree>
class ScopedSettings;

template <class Tree>
struct TypeName<ScopedSettings<Tree>>
{
    static constexpr auto kValue = L"StrataSettings::ScopedSettings<class " + TypeName<Tree>::kValue + L">";
};

/// What a scope has to be built on: its tree is there first and goes last.
template <class Tree>
class ScopeTree
{
protected:
    Tree m_tree;
};

/// A scope with its tree.
template <class Tree>
class ScopedSettings : private ScopeTree<Tree>, public Scope
{
public:
    /// `sid` is "S-1-5-18" for the machine, a user's SID, or empty for the calling user. `elevated` asks the user.
    ScopedSettings(const std::string& sid, const wchar_t* storeArgument, const wchar_t* clientId, bool elevated)
        : Scope(this->m_tree, kLogNames, sid, storeArgument, clientId, elevated)
    {}

    /// As Scope::LoadMissing(), and follows the store from the first call on. Whether the scope is loaded.
    bool LoadOnce(Observer* observer, Attempt attempt = Attempt::Everything)
    {
        LoadMissing(observer, attempt);
        return IsLoaded();
    }

    bool LoadMissing(Observer* observer, Attempt attempt)
    {
        if (!IsFollowing())
            Follow(std::make_unique<Listener<ScopedSettings>>(*this), observer);
        return Scope::LoadMissing(attempt);
    }

    Tree& Settings() noexcept { return this->m_tree; }
    const Tree& Settings() const noexcept { return this->m_tree; }

private:
    static constexpr auto kName = TypeName<ScopedSettings>::kValue + L"::";
    static constexpr auto kConstructName = kName + L"ScopedSettings";
    static constexpr auto kResetHandleName = kName + L"ResetHandle";
    static constexpr auto kLoadName = kName + L"Load";
    static constexpr auto kSaveName = kName + L"Save";
    static constexpr LogNames kLogNames{FunctionLog(kConstructName.String()), FunctionLog(kResetHandleName.String()),
                                        FunctionLog(kLoadName.String()), FunctionLog(kSaveName.String())};
};

} // namespace StrataSettings
