#include "settings/binding/SettingsListener.h"

#include "settings/binding/Model.h"
#include "settings/binding/PropertyBase.h"
#include "settings/binding/Scope.h"

#include <utility>

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

OrbStrataSettingsListener::OrbStrataSettingsListener(Scope& scope, std::wstring logName)
    : m_scope(scope), m_logName(std::move(logName))
{}

OrbStrataSettingsListener::~OrbStrataSettingsListener()
{
    for (const OrbStrataSubscription subscription : m_subscriptions)
        OrbStrata_Unsubscribe(m_handle, subscription);
}

void OrbStrataSettingsListener::Subscribe(Attempt attempt)
{
    const bool again = m_handle != nullptr;
    if (!again)
    {
        m_handle = m_scope.EffectiveHandle(); // and stays, whichever handle saves later
        m_scope.Settings().ForEachProperty([this](PropertyBase& property) {
            for (const std::int32_t type : {ORB_STRATA_CHANGED, ORB_STRATA_REMOVED})
                m_missing.push_back({&property, type});
        });
    }

    for (std::size_t left = m_missing.size(); left > 0; --left)
    {
        const Wanted wanted = m_missing.front();
        m_missing.pop_front();
        if (SubscribeKey(wanted.property->GetKey().c_str(), wanted.type))
        {
            if (m_scope.IsLoaded())
                wanted.property->Refresh(m_handle, nullptr);
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
    LOG(Log(L"Subscribe"), 2, L"%s: Failed to add listener '%ls', Type: %d, error %du", key, type,
        static_cast<int>(result));
    if (subscription)
        OrbStrata_Unsubscribe(m_handle, subscription);
    return false;
}

void OrbStrataSettingsListener::OnSettingChanged(const std::wstring& key, std::int32_t type, const char* objectString)
{
    if (!m_scope.Take(key, objectString))
        LOG(Log(L"OnSettingChanged"), 2, L"%s: Could not find '%ls', type %d", key.c_str(), type);
}

void OrbStrataSettingsListener::OnSettingRemoved(const std::wstring& key)
{
    if (!m_scope.Take(key, nullptr))
        LOG(Log(L"OnSettingRemoved"), 2, L"%s: Could not erase %ls", key.c_str());
}

} // namespace StrataSettings
