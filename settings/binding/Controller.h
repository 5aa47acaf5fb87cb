#pragma once

#include "settings/binding/ControllerBase.h"
#include "settings/binding/ScopedSettings.h"

/// A controller over one scope with a tree of this type.
template <class Tree>
class Controller : public ControllerBase
{
public:
    /// `elevated` asks the user to agree; without a handle afterwards the user declined or the store failed.
    Controller(StrataSettings::Observer* observer, const std::string& sid, const wchar_t* clientId, bool elevated)
        : ControllerBase(observer), m_scope(sid, kSettingsStore, clientId, elevated)
    {}

    const Tree& Settings() override { return m_scope.Settings(); }
    Tree& WritableSettings() override { return m_scope.Settings(); }

private:
    StrataSettings::Scope& Current() override { return m_scope; }

    StrataSettings::ScopedSettings<Tree> m_scope;
};
