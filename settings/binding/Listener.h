#pragma once

#include "logging/LogName.h"
#include "settings/binding/Scope.h"
#include "settings/binding/SettingsListener.h"
#include "settings/binding/TypeName.h"

namespace StrataSettings
{

/// Brings the store's changes into a scope. Lives inside the scope's lifetime. `Settings` names it in the log.
template <class Settings>
class Listener final : public OrbStrataSettingsListener
{
public:
    explicit Listener(Scope& scope) : OrbStrataSettingsListener(kSubscribe), m_scope(scope) {}
    ~Listener() override { Unsubscribe(); }

    void OnSettingChanged(const std::wstring& key, std::int32_t type, const char* objectString) override
    {
        if (!m_scope.Take(key, objectString))
            LOG(kChanged, 2, L"%s: Could not find '%ls', type %d", key.c_str(), type);
    }

    void OnSettingRemoved(const std::wstring& key) override
    {
        if (!m_scope.Take(key, nullptr))
            LOG(kRemoved, 2, L"%s: Could not erase %ls", key.c_str());
    }

private:
    static constexpr auto kName = L"StrataSettings::Listener<class " + TypeName<Settings>::kValue + L" >::";
    static constexpr auto kSubscribeName = kName + L"Subscribe";
    static constexpr auto kChangedName = kName + L"OnSettingChanged";
    static constexpr auto kRemovedName = kName + L"OnSettingRemoved";
    static constexpr FunctionLog kSubscribe{kSubscribeName.String()};
    static constexpr FunctionLog kChanged{kChangedName.String()};
    static constexpr FunctionLog kRemoved{kRemovedName.String()};

    Scope& m_scope;
};

} // namespace StrataSettings
