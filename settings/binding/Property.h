#pragma once

#include "settings/binding/PropertyBase.h"
#include "settings/binding/StoreCodec.h"
#include "settings/binding/TypeName.h"

#include <type_traits>
#include <utility>

namespace StrataSettings
{

/// One setting with a value of type T, which stands in the store as StoreCodec<T> says.
template <class T>
class Property : public PropertyBase
{
    static_assert(kTypeName<T> != nullptr, "the log has no name for the type");

public:
    /// A property of a model, which it registers with, or of its own (null).
    Property(Model* parent, Key key, T defaultValue)
        : PropertyBase(parent, std::move(key), kTypeName<T>), m_default(std::move(defaultValue)), m_value(m_default)
    {}

    T Get() const
    {
        const std::lock_guard lock(m_mutex);
        return m_value;
    }

    /// Takes a value of the plug-in's, unless the setting is enforced. An equal value is a change only while the store
    /// is not known to hold it.
    SetResult Set(const T& value)
    {
        return Change([this, &value](T& held) {
            if (held == value && m_state != ModificationState::Default && m_reading != Reading::Failed)
                return false;
            held = value;
            return true;
        });
    }

    /// As Set(), for a value that is changed in place: `edit(T&)` answers whether it changed anything. It runs under
    /// the property's mutex and must not call back.
    template <class Edit>
    SetResult Change(Edit&& edit)
    {
        if (IsEnforced())
            return SetResult::Enforced;
        const std::lock_guard lock(m_mutex);
        if (!edit(m_value))
            return SetResult::Unchanged;
        m_state = ModificationState::Changed;
        if (m_reading == Reading::Failed)
            m_reading = Reading::Whole;
        return SetResult::Stored;
    }

    /// As Change(), for an edit that builds on what the store holds: an unread value is loaded first. Unreadable when
    /// that fails.
    template <class Edit>
    SetResult ChangeStored(Edit&& edit)
    {
        if (IsUnread())
            Load();
        return ReadFailed() ? SetResult::Unreadable : Change(std::forward<Edit>(edit));
    }

    /// Looks at the value under the property's mutex; `look` must not call back.
    template <class Look>
    auto Inspect(Look&& look) const
    {
        const std::lock_guard lock(m_mutex);
        return look(m_value);
    }

    void Update(const void* value) override
    {
        if (!value)
            return;
        const std::lock_guard lock(m_mutex);
        Take(*static_cast<const T*>(value), ModificationState::InStep);
    }

    void Refresh(OrbStrataHandle handle, const char* objectString) override
    {
        const std::lock_guard lock(m_mutex);
        const OrbStrataResult result = LoadLocked(handle);
        if (result == ORB_STRATA_NOT_FOUND)
        {
            TakeDefault();
            TakeConstraints(0);
        }
        else if (m_reading == Reading::Failed && m_state != ModificationState::Changed)
            TakeString(objectString);
    }

    void CopyFrom(const PropertyBase& other) override
    {
        const auto& source = static_cast<const Property&>(other);
        const std::scoped_lock lock(m_mutex, source.m_mutex);
        Take(source.m_value, source.m_state);
        m_reading = source.m_reading;
        m_constraintsMissing = source.m_constraintsMissing;
        m_constraints = source.Constraints();
    }

protected:
    OrbStrataResult Read(OrbStrataHandle handle) override
    {
        T value{};
        const OrbStrataResult result = StoreCodec<T>::Read(handle, GetKey().c_str(), value);
        if (result == ORB_STRATA_SUCCESS)
            Hold(std::move(value));
        return result;
    }

    OrbStrataResult Write(OrbStrataHandle handle) override
    {
        return StoreCodec<T>::Write(handle, GetKey().c_str(), m_value);
    }

    /// Takes a structured value's text form; plain values have none. Under the mutex.
    virtual void TakeString(const char*) {}

    void TakeDefault() override
    {
        Hold(m_default);
        m_state = ModificationState::Default;
    }

    void Take(const T& value, ModificationState state)
    {
        Hold(value);
        m_state = state;
        m_reading = Reading::Whole;
    }

    void Hold(T value)
    {
        if (value == m_value)
            return;
        m_value = std::move(value);
        m_news = true;
    }

private:
    const T m_default;

protected:
    T m_value;
};

} // namespace StrataSettings
