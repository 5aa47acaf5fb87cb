#include "settings/binding/SettingsListener.h"

#include "settings/binding/Model.h"
#include "settings/binding/PropertyBase.h"

namespace StrataSettings
{

namespace
{

void NL_SUITE_CALL OnStoreNotification(void* context, const wchar_t* key, std::int32_t changeType,
                                       const char* objectString)
{
    auto* listener = static_cast<OrbStrataSettingsListener*>(context);
    if (changeType == ORB_STRATA_REMOVED)
        listener->OnSettingRemoved(key);
    else
        listener->OnSettingChanged(key, changeType, objectString);
}

} // namespace

void OrbStrataSettingsListener::Subscribe(OrbStrataHandle handle, const Model& tree,
                                          const std::function<void(PropertyBase&)>& subscribed, Attempt attempt)
{
    const bool again = m_handle != nullptr;
    if (!again)
        tree.ForEachProperty([this](PropertyBase& property) {
            for (const std::int32_t type : {ORB_STRATA_CHANGED, ORB_STRATA_REMOVED})
                m_missing.push_back({&property, type});
        });
    m_handle = handle;

    for (std::size_t left = m_missing.size(); left > 0; --left)
    {
        const Wanted wanted = m_missing.front();
        m_missing.pop_front();
        if (SubscribeKey(wanted.property->GetKey().c_str(), wanted.type))
        {
            subscribed(*wanted.property);
            continue;
        }
        m_missing.push_back(wanted);
        if (again && attempt == Attempt::WhileItAnswers)
            return;
    }
}

bool OrbStrataSettingsListener::SubscribeKey(const wchar_t* key, std::int32_t type)
{
    OrbStrataResult result = ORB_STRATA_INVALID_HANDLE;
    const OrbStrataSubscription subscription =
        OrbStrata_Subscribe(m_handle, key, type, OnStoreNotification, this, &result);
    if (subscription && result == ORB_STRATA_SUCCESS)
    {
        m_subscriptions.push_back(subscription);
        return true;
    }
    LOG(m_subscribeLog, 2, L"%s: Failed to add listener '%ls', Type: %d, error %du", key, type,
        static_cast<int>(result));
    if (subscription)
        OrbStrata_Unsubscribe(m_handle, subscription);
    return false;
}

void OrbStrataSettingsListener::Unsubscribe()
{
    for (const OrbStrataSubscription subscription : m_subscriptions)
        OrbStrata_Unsubscribe(m_handle, subscription);
    m_subscriptions.clear();
}

} // namespace StrataSettings
