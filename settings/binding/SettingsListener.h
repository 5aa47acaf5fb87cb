#pragma once

#include "delay_load/OrbStrataApi.h"
#include "logging/FunctionLog.h"
#include "settings/binding/Scope.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace StrataSettings
{

class Model;
class PropertyBase;

/// Registered with the store for every key of a tree, for both kinds of change. The store calls the virtual operations
/// on a thread of its own. A derived class unsubscribes in its destructor, before its own members go.
class OrbStrataSettingsListener
{
public:
    virtual ~OrbStrataSettingsListener() { Unsubscribe(); }
    OrbStrataSettingsListener(const OrbStrataSettingsListener&) = delete;
    OrbStrataSettingsListener& operator=(const OrbStrataSettingsListener&) = delete;

    /// Subscribes the tree's keys, when called again those that the store has refused so far, and calls `subscribed`
    /// for each. A refusal is logged.
    void Subscribe(OrbStrataHandle handle, const Model& tree, const std::function<void(PropertyBase&)>& subscribed,
                   Attempt attempt);

    /// Whether every key is subscribed.
    bool IsComplete() const noexcept { return m_handle && m_missing.empty(); }

    /// Returns when no callback runs or will run. Called before the handle is closed.
    void Unsubscribe();

    virtual void OnSettingChanged(const std::wstring& key, std::int32_t type, const char* objectString) = 0;
    virtual void OnSettingRemoved(const std::wstring& key) = 0;

protected:
    explicit OrbStrataSettingsListener(const FunctionLog& subscribeLog) : m_subscribeLog(subscribeLog) {}

private:
    struct Wanted
    {
        PropertyBase* property;
        std::int32_t type;
    };

    bool SubscribeKey(const wchar_t* key, std::int32_t type);

    const FunctionLog& m_subscribeLog;
    OrbStrataHandle m_handle = nullptr;
    std::deque<Wanted> m_missing;
    std::vector<OrbStrataSubscription> m_subscriptions;
};

} // namespace StrataSettings
