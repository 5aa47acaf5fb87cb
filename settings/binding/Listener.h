#pragma once

#include "logging/LogName.h"
#include "settings/binding/Observer.h"
#include "settings/binding/PropertyBase.h"
#include "settings/binding/SettingsListener.h"
#include "settings/binding/TypeName.h"

namespace StrataSettings
{

/// Brings the store's changes into a scope's tree, then tells the observer. Lives inside the scope's lifetime.
template <class Scope>
class Listener final : public OrbStrataSettingsListener
{
public:
    /// `observer` may be null. Both outlive the listener.
    Listener(Scope& scope, Observer* observer)
        : OrbStrataSettingsListener(kSubscribe), m_scope(scope), m_observer(observer)
    {}
    ~Listener() { Unsubscribe(); }

    /// As the base class's, with the scope's own handle and tree.
    bool Subscribe() { return OrbStrataSettingsListener::Subscribe(m_scope.EffectiveHandle(), m_scope.Settings()); }

    void OnSettingChanged(const std::wstring& key, std::int32_t type, const char* objectText) override
    {
        PropertyBase* property = m_scope.Settings().Find(key);
        if (!property)
        {
            LOG(kChanged, 2, L"%s: Could not find '%ls', type %d", key.c_str(), type);
            return;
        }
        property->Refresh(m_scope.EffectiveHandle(), objectText);
        Tell(*property);
    }

    void OnSettingRemoved(const std::wstring& key) override
    {
        PropertyBase* property = m_scope.Settings().Find(key);
        if (!property)
        {
            LOG(kRemoved, 2, L"%s: Could not erase %ls", key.c_str());
            return;
        }
        property->Reset(m_scope.EffectiveHandle());
        Tell(*property);
    }

private:
    void Tell(const PropertyBase& property)
    {
        if (m_observer)
            m_observer->OnPropertyChanged(property);
    }

    static constexpr auto kName = L"StrataSettings::Listener<class " + TypeName<Scope>::value + L" >::";
    static constexpr auto kSubscribeName = kName + L"Subscribe";
    static constexpr auto kChangedName = kName + L"OnSettingChanged";
    static constexpr auto kRemovedName = kName + L"OnSettingRemoved";
    static constexpr FunctionLog kSubscribe{kSubscribeName.Text()};
    static constexpr FunctionLog kChanged{kChangedName.Text()};
    static constexpr FunctionLog kRemoved{kRemovedName.Text()};

    Scope& m_scope;
    Observer* const m_observer;
};

} // namespace StrataSettings
