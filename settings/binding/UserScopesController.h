#pragma once

#include "settings/binding/ControllerBase.h"
#include "settings/binding/DelayedSave.h"

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

/// A controller over a scope for each user: opened and loaded on first use, and saved with a delay on a thread of its
/// own. The current user's is the one that is shown; only its changes reach subscribers.
class UserScopesController : public ControllerBase
{
public:
    /// Saves what still waits, and what an earlier save could not write.
    ~UserScopesController() override;

    bool Load() override;

    /// Saves every scope.
    bool Save() override;

    const std::string& CurrentSid() const noexcept { return m_currentSid; }

    /// A user's scope: created, and loaded, on first use.
    StrataSettings::Scope& Emplace(const std::string& sid);

    /// Has this user's changes written soon.
    void RequestSave(const std::string& sid);

    /// Drops the scopes that are neither the current user's nor waiting to be saved.
    void RemoveUnused();

protected:
    /// `logName` is what the log calls the controller's class. `system` is held as long as the users' settings.
    /// `delayedSave` starts the save thread; without it RequestSave() saves at once.
    UserScopesController(std::wstring logName, std::string sid, std::shared_ptr<ControllerBase> system,
                         bool delayedSave);

    StrataSettings::Scope& Current() override;

private:
    virtual std::unique_ptr<StrataSettings::Scope> Open(const std::string& sid) const = 0;

    bool TryMissing(StrataSettings::Attempt attempt) override;

    StrataSettings::Scope* Find(const std::string& sid);
    StrataSettings::Scope& Create(const std::string& sid);
    void SaveScope(const std::string& sid);
    MethodLog Log(const wchar_t* function) const { return {m_logName, function}; }

    const std::wstring m_logName;
    const std::shared_ptr<ControllerBase> m_system;
    const std::string m_currentSid;

    // Changed on the controller's own thread only, under the mutex; the save thread looks scopes up under it.
    std::mutex m_scopesMutex;
    std::map<std::string, std::unique_ptr<StrataSettings::Scope>> m_scopes;

    StrataSettings::Scope* m_current = nullptr; // stays in the map

    std::optional<StrataSettings::DelayedSave> m_delayedSave;
};
