#include "settings/binding/SettingsListener.h"

#include "settings/binding/Model.h"
#include "settings/binding/PropertyBase.h"

namespace StrataSettings
{

namespace
{

void NL_SUITE_CALL OnStoreNotification(void* context, const wchar_t* key, std::int32_t changeType,
                                       const char* objectText)
{
    auto* listener = static_cast<OrbStrataSettingsListener*>(context);
    if (changeType == ORB_STRATA_REMOVED)
        listener->OnSettingRemoved(key);
    else
        listener->OnSettingChanged(key, changeType, objectText);
}

} // namespace

bool OrbStrataSettingsListener::Subscribe(OrbStrataHandle handle, const Model& tree)
{
    m_handle = handle;
    bool subscribed = true;
    tree.ForEachProperty([&](const PropertyBase& property) {
        for (const std::int32_t type : {ORB_STRATA_CHANGED, ORB_STRATA_REMOVED})
            subscribed &= SubscribeKey(property.GetKey().c_str(), type);
    });
    return subscribed;
}

bool OrbStrataSettingsListener::SubscribeKey(const wchar_t* key, std::int32_t type)
{
    OrbStrataResult result = ORB_STRATA_INVALID_HANDLE;
    const OrbStrataSubscription subscription =
        OrbStrata_Subscribe(m_handle, key, type, OnStoreNotification, this, &result);
    if (result != ORB_STRATA_SUCCESS)
    {
        LOG(m_subscribeLog, 2, L"%s: Failed to add listener '%ls', Type: %d, error %du", key, type,
            static_cast<int>(result));
        return false;
    }
    m_subscriptions.push_back(subscription);
    return true;
}

void OrbStrataSettingsListener::Unsubscribe()
{
    for (const OrbStrataSubscription subscription : m_subscriptions)
        OrbStrata_Unsubscribe(m_handle, subscription);
    m_subscriptions.clear();
}

} // namespace StrataSettings
