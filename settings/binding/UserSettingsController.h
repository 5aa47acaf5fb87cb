#pragma once

#include "settings/binding/ChooseUser.h"
#include "settings/binding/DelayedSave.h"
#include "settings/binding/SystemSettingsController.h"

#include <map>
#include <memory>
#include <optional>

/// The settings of the machine's users: one scope for each SID, opened and loaded on first use, and saved with a delay
/// on a thread of its own. The handlers see the current user's scope; only its changes reach subscribers.
template <class Tree>
class UserSettingsController final : public ControllerBase<Tree>
{
public:
    using SystemController = SystemSettingsController<Tree>;
    using Scope = StrataSettings::ScopedSettings<Tree>;

    /// A controller for the user of the active console session, else for the user that the process runs as. `loadNow`
    /// loads that user's settings at once instead of on first use.
    static std::shared_ptr<UserSettingsController> Create(const std::shared_ptr<SystemController>& system, bool loadNow)
    {
        auto controller = std::make_shared<UserSettingsController>(ChooseUserSid(kCreate), system, true);
        if (loadNow)
            controller->Load();
        return controller;
    }

    /// `delayedSave` starts the save thread; without it RequestSave() saves at once.
    UserSettingsController(std::string sid, std::shared_ptr<SystemController> system, bool delayedSave)
        : ControllerBase<Tree>(nullptr), m_system(std::move(system)), m_currentSid(std::move(sid))
    {
        if (delayedSave)
            m_delayedSave.emplace(
                kDelayedSaveProcessing, [this](const std::string& waiting) { SaveScope(waiting); });
    }

    /// Saves what still waits, and what an earlier save could not write.
    ~UserSettingsController() override
    {
        m_delayedSave.reset();
        for (auto& [sid, scope] : m_scopes)
            if (scope.EffectiveHandle())
                scope.Save();
    }

    bool Load() override
    {
        TryMissing(StrataSettings::Attempt::Everything);
        return Current().IsLoaded();
    }

    /// Saves every scope.
    bool Save() override
    {
        bool saved = true;
        for (auto& [sid, scope] : m_scopes)
            saved &= scope.Save();
        return saved;
    }

    bool HasHandle() override { return Current().EffectiveHandle() != nullptr; }
    const Tree& Settings() override { return Current().Settings(); }
    Tree& WritableSettings() override { return Current().Settings(); }

    const std::string& CurrentSid() const noexcept { return m_currentSid; }

    /// A user's scope: created, and loaded, on first use.
    Scope& Emplace(const std::string& sid)
    {
        LOG(kEmplace, 5, L"%s: entering");
        Scope* scope = Find(sid);
        if (!scope)
            scope = &Create(sid);
        LOG(kEmplace, 5, L"%s: leaving");
        return *scope;
    }

    /// Has this user's changes written soon.
    void RequestSave(const std::string& sid)
    {
        if (m_delayedSave)
            m_delayedSave->Request(sid);
        else
            SaveScope(sid);
    }

    /// Drops the scopes that are neither the current user's nor waiting to be saved.
    void RemoveUnused()
    {
        for (auto entry = m_scopes.begin(); entry != m_scopes.end();)
        {
            const auto candidate = entry++;
            const std::string& sid = candidate->first;
            if (sid == m_currentSid || (m_delayedSave && m_delayedSave->IsWaiting(sid)))
                continue;
            LOG(kRemoveUnused, 5, L"%s: '%hs' erased", sid.c_str());
            const std::lock_guard lock(m_scopesMutex);
            m_scopes.erase(candidate);
        }
    }

private:
    bool TryMissing(StrataSettings::Attempt attempt) override
    {
        Scope& scope = Current();
        const bool opens = !scope.EffectiveHandle();
        if (opens)
        {
            LOG(kLoad, 5, L"%s: Strata handle was not valid, resetting.");
            scope.ResetHandle();
        }
        const bool told = scope.LoadMissing(this->ChangeObserver(), attempt);
        if (opens && scope.EffectiveHandle())
            RequestSave(m_currentSid); // what was changed while there was no store
        return told;
    }

    Scope& Current()
    {
        if (!m_current)
            m_current = &Emplace(m_currentSid);
        return *m_current;
    }

    Scope* Find(const std::string& sid)
    {
        const std::lock_guard lock(m_scopesMutex);
        const auto entry = m_scopes.find(sid);
        return entry == m_scopes.end() ? nullptr : &entry->second;
    }

    Scope& Create(const std::string& sid)
    {
        Scope& scope = Add(sid);
        LOG(kEmplace, 5, L"%s: '%hs' emplaced", sid.c_str());

        StrataSettings::Observer* const observer = sid == m_currentSid ? this->ChangeObserver() : nullptr;
        const bool loaded = scope.LoadOnce(observer);
        if (!scope.EffectiveHandle())
            LOG(kEmplace, 5, L"%s: Strata handle not available (yet), returning uninitialized settings");
        else if (!loaded)
            LOG(kEmplace, 5, L"%s: Failed to lazy load '%hs'", sid.c_str());
        return scope;
    }

    Scope& Add(const std::string& sid)
    {
        const std::lock_guard lock(m_scopesMutex);
        return m_scopes
            .emplace(std::piecewise_construct, std::forward_as_tuple(sid),
                     std::forward_as_tuple(sid, kSettingsStore, kSettingsClientId, false))
            .first->second;
    }

    void SaveScope(const std::string& sid)
    {
        if (Scope* scope = Find(sid))
            scope->Save();
    }

    static constexpr auto kName = L"UserSettingsController<class " + StrataSettings::TypeName<Tree>::kValue + L">::";
    static constexpr auto kCreateName = kName + L"Create";
    static constexpr auto kEmplaceName = kName + L"Emplace";
    static constexpr auto kLoadName = kName + L"Load";
    static constexpr auto kDelayedSaveName = kName + L"DelayedSaveProcessing";
    static constexpr auto kRemoveUnusedName = kName + L"RemoveUnused";
    static constexpr FunctionLog kCreate{kCreateName.String()};
    static constexpr FunctionLog kEmplace{kEmplaceName.String()};
    static constexpr FunctionLog kLoad{kLoadName.String()};
    static constexpr FunctionLog kDelayedSaveProcessing{kDelayedSaveName.String()};
    static constexpr FunctionLog kRemoveUnused{kRemoveUnusedName.String()};

    const std::shared_ptr<SystemController> m_system;
    const std::string m_currentSid;

    // Changed on the controller's own thread only, under the mutex; the save thread looks scopes up under it.
    std::mutex m_scopesMutex;
    std::map<std::string, Scope> m_scopes;

    Scope* m_current = nullptr; // stays in the map

    std::optional<StrataSettings::DelayedSave> m_delayedSave;
};
