#pragma once

#include "settings/binding/ControllerBase.h"
#include "settings/binding/ScopedSettings.h"

/// A controller over one scope.
template <class Tree>
class Controller : public ControllerBase<Tree>
{
public:
    /// `elevated` asks the user to agree; without a handle afterwards the user declined or the store failed.
    Controller(StrataSettings::Observer* observer, const std::string& sid, const wchar_t* clientId, bool elevated)
        : ControllerBase<Tree>(observer), m_scope(sid, kSettingsStore, clientId, elevated)
    {}

    /// Without a handle tries to get one, unless the constructor has just tried; an elevated one asks the user again.
    bool Load() override
    {
        if (!HasHandle() && m_scope.IsFollowing())
            m_scope.ResetHandle();
        return m_scope.LoadOnce(this->ChangeObserver()) || m_scope.Load();
    }

    bool Save() override { return m_scope.Save(); }
    bool HasHandle() override { return m_scope.EffectiveHandle() != nullptr; }
    const Tree& Settings() override { return m_scope.Settings(); }
    Tree& WritableSettings() override { return m_scope.Settings(); }

private:
    /// Asks nobody.
    bool TryMissing(StrataSettings::Attempt attempt) override
    {
        if (!HasHandle() && !m_scope.IsElevated())
            m_scope.ResetHandle();
        return m_scope.LoadMissing(this->ChangeObserver(), attempt);
    }

    StrataSettings::ScopedSettings<Tree> m_scope;
};
