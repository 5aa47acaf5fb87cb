#pragma once

#include "delay_load/OrbStrataApi.h"
#include "logging/FunctionLog.h"

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

namespace StrataSettings
{

enum class Attempt;
class PropertyBase;
class Scope;

/// Registered with the store for every key of a scope, for both kinds of change, and brings the changes into the scope.
/// Lives inside the scope's lifetime. Subscribed and ended on the scope's thread; the store tells it on one of its own.
class OrbStrataSettingsListener
{
public:
    OrbStrataSettingsListener(const OrbStrataSettingsListener&) = delete;
    OrbStrataSettingsListener& operator=(const OrbStrataSettingsListener&) = delete;

    /// Returns when no callback runs or will run. Called before the handle is closed.
    virtual ~OrbStrataSettingsListener();

    /// Subscribes the scope's keys with its handle, when called again those that the store has refused so far; where
    /// the scope is loaded it reads each of these anew, which may have changed unheard. A refusal is logged.
    void Subscribe(Attempt attempt);

    /// Whether every key is subscribed.
    bool IsComplete() const noexcept { return m_handle && m_missing.empty(); }

    void OnSettingChanged(const std::wstring& key, std::int32_t type, const char* objectString);
    void OnSettingRemoved(const std::wstring& key);

protected:
    OrbStrataSettingsListener(Scope& scope, std::wstring logName);

private:
    struct Wanted
    {
        PropertyBase* property;
        std::int32_t type;
    };

    bool SubscribeKey(const wchar_t* key, std::int32_t type);
    MethodLog Log(const wchar_t* function) const { return {m_logName, function}; }

    Scope& m_scope;
    const std::wstring m_logName;
    OrbStrataHandle m_handle = nullptr;
    std::deque<Wanted> m_missing;
    std::vector<OrbStrataSubscription> m_subscriptions;
};

} // namespace StrataSettings
