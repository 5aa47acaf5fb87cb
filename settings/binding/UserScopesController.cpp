#include "settings/binding/UserScopesController.h"

#include <utility>

using StrataSettings::Scope;

UserScopesController::UserScopesController(std::wstring logName, std::string sid,
                                           std::shared_ptr<ControllerBase> system, bool delayedSave)
    : ControllerBase(nullptr), m_logName(std::move(logName)), m_system(std::move(system)), m_currentSid(std::move(sid))
{
    if (delayedSave)
        m_delayedSave.emplace(
            Log(L"DelayedSaveProcessing"), [this](const std::string& waiting) { SaveScope(waiting); });
}

UserScopesController::~UserScopesController()
{
    m_delayedSave.reset();
    for (auto& [sid, scope] : m_scopes)
        if (scope->EffectiveHandle())
            scope->Save();
}

bool UserScopesController::Load()
{
    TryMissing(StrataSettings::Attempt::Everything);
    return Current().IsLoaded();
}

bool UserScopesController::Save()
{
    bool saved = true;
    for (auto& [sid, scope] : m_scopes)
        saved &= scope->Save();
    return saved;
}

Scope& UserScopesController::Emplace(const std::string& sid)
{
    LOG(Log(L"Emplace"), 5, L"%s: entering");
    Scope* scope = Find(sid);
    if (!scope)
        scope = &Create(sid);
    LOG(Log(L"Emplace"), 5, L"%s: leaving");
    return *scope;
}

void UserScopesController::RequestSave(const std::string& sid)
{
    if (m_delayedSave)
        m_delayedSave->Request(sid);
    else
        SaveScope(sid);
}

void UserScopesController::RemoveUnused()
{
    for (auto entry = m_scopes.begin(); entry != m_scopes.end();)
    {
        const auto candidate = entry++;
        const std::string& sid = candidate->first;
        if (sid == m_currentSid || (m_delayedSave && m_delayedSave->IsWaiting(sid)))
            continue;
        LOG(Log(L"RemoveUnused"), 5, L"%s: '%hs' erased", sid.c_str());
        const std::lock_guard lock(m_scopesMutex);
        m_scopes.erase(candidate);
    }
}

Scope& UserScopesController::Current()
{
    if (!m_current)
        m_current = &Emplace(m_currentSid);
    return *m_current;
}

bool UserScopesController::TryMissing(StrataSettings::Attempt attempt)
{
    Scope& scope = Current();
    const bool opens = !scope.EffectiveHandle();
    if (opens)
    {
        LOG(Log(L"Load"), 5, L"%s: Strata handle was not valid, resetting.");
        scope.ResetHandle();
    }
    const bool told = scope.LoadMissing(ChangeObserver(), attempt);
    if (opens && scope.EffectiveHandle())
        RequestSave(m_currentSid); // what was changed while there was no store
    return told;
}

Scope* UserScopesController::Find(const std::string& sid)
{
    const std::lock_guard lock(m_scopesMutex);
    const auto entry = m_scopes.find(sid);
    return entry == m_scopes.end() ? nullptr : entry->second.get();
}

Scope& UserScopesController::Create(const std::string& sid)
{
    std::unique_ptr<Scope> opened = Open(sid);
    Scope& scope = *opened;
    {
        const std::lock_guard lock(m_scopesMutex);
        m_scopes.emplace(sid, std::move(opened));
    }
    LOG(Log(L"Emplace"), 5, L"%s: '%hs' emplaced", sid.c_str());

    const bool loaded = scope.LoadOnce(sid == m_currentSid ? ChangeObserver() : nullptr);
    if (!scope.EffectiveHandle())
        LOG(Log(L"Emplace"), 5, L"%s: Strata handle not available (yet), returning uninitialized settings");
    else if (!loaded)
        LOG(Log(L"Emplace"), 5, L"%s: Failed to lazy load '%hs'", sid.c_str());
    return scope;
}

void UserScopesController::SaveScope(const std::string& sid)
{
    if (Scope* scope = Find(sid))
        scope->Save();
}
