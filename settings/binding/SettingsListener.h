#pragma once

#include "delay_load/OrbStrataApi.h"
#include "logging/FunctionLog.h"

#include <cstdint>
#include <string>
#include <vector>

namespace StrataSettings
{

class Model;

/// Registered with the store for every key of a tree, for both kinds of change. The store calls the virtual operations
/// on a thread of its own. A derived class unsubscribes in its destructor, before its own members go.
class OrbStrataSettingsListener
{
public:
    /// Subscribes the tree's keys. False when the store refused one, which is logged; the others are subscribed.
    bool Subscribe(OrbStrataHandle handle, const Model& tree);

    /// Returns when no callback runs or will run. Called before the handle is closed.
    void Unsubscribe();

    virtual void OnSettingChanged(const std::wstring& key, std::int32_t type, const char* objectText) = 0;
    virtual void OnSettingRemoved(const std::wstring& key) = 0;

protected:
    explicit OrbStrataSettingsListener(const FunctionLog& subscribeLog) : m_subscribeLog(subscribeLog) {}
    ~OrbStrataSettingsListener() { Unsubscribe(); }

    OrbStrataSettingsListener(const OrbStrataSettingsListener&) = delete;
    OrbStrataSettingsListener& operator=(const OrbStrataSettingsListener&) = delete;

private:
    bool SubscribeKey(const wchar_t* key, std::int32_t type);

    const FunctionLog& m_subscribeLog;
    OrbStrataHandle m_handle = nullptr;
    std::vector<OrbStrataSubscription> m_subscriptions;
};

} // namespace StrataSettings
