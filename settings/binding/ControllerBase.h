#pragma once

#include "settings/binding/ChangeDispatcher.h"
#include "settings/binding/Key.h"
#include "settings/binding/Model.h"
#include "settings/binding/PropertyBase.h"
#include "settings/binding/Scope.h"

#include <set>
#include <typeindex>

/// Which store the suite's client programs share, and what they are known as there.
inline constexpr const wchar_t* kSettingsStore = L"safe";
inline constexpr const wchar_t* kSettingsClientId = L"vdn_gui";

/// A controller owns settings scopes over `Tree`, follows the store with them and tells its subscribers of changes.
/// Created, used and destroyed on one thread, the one that runs the event loop.
template <class Tree>
class ControllerBase
{
public:
    using ChangeCallback = StrataSettings::ChangeCallback;
    using Registration = StrataSettings::ChangeDispatcher::Registration;

    /// `observer`, where it is not null, is told of changes, on any thread, in place of the subscribers; then nothing
    /// is tried again by itself.
    explicit ControllerBase(StrataSettings::Observer* observer) : m_observer(observer ? observer : &m_dispatcher) {}
    ControllerBase(const ControllerBase&) = delete;
    ControllerBase& operator=(const ControllerBase&) = delete;
    virtual ~ControllerBase() = default;

    /// Opens what is not open yet and loads what is not loaded yet or could not be read. False when there is no store
    /// handle.
    virtual bool Load() = 0;

    /// Tries to open, subscribe and read what is missing, if anything is. True when subscribers will be told of
    /// something. Happens by itself, too, every three seconds as long as something is missing.
    bool LoadMissing() { return TryMissing(StrataSettings::Attempt::Everything); }

    /// Writes what was changed and is not enforced. False without a handle or when the store refused a property.
    virtual bool Save() = 0;

    virtual bool HasHandle() = 0;

    /// The settings to show, and to change before saving. Without a store handle they are the defaults.
    virtual const Tree& Settings() = 0;
    virtual Tree& WritableSettings() = 0;

    /// From now on calls `callback` with the key when the store tells of a change of it, through the event loop and on
    /// the controller's thread, until the registration is destroyed. An unknown key is not accepted.
    [[nodiscard]] virtual Registration Subscribe(const std::wstring& key, ChangeCallback callback)
    {
        if (!Settings().Find(key))
            return {};
        return m_dispatcher.Subscribe(key, std::move(callback));
    }

    /// Whether this controller is the one that serves a group.
    virtual bool Serves(const std::type_info& group) const { return m_served.count(group) != 0; }

    /// The settings' group of this type, or null.
    virtual StrataSettings::Model* FindChild(const std::type_info& group)
    {
        return WritableSettings().FindChild(group);
    }

    [[nodiscard]] Registration Subscribe(const StrataSettings::PropertyBase& property, ChangeCallback callback)
    {
        return Subscribe(property.GetKey().String(), std::move(callback));
    }

    /// Adds the groups that the tree has to those that the controller serves.
    template <class... Groups>
    void Serve()
    {
        (ServeIfPresent(typeid(Groups)), ...);
    }

protected:
    virtual bool TryMissing(StrataSettings::Attempt attempt) = 0;

    StrataSettings::Observer* ChangeObserver() const noexcept { return m_observer; }

private:
    void ServeIfPresent(const std::type_info& group)
    {
        if (FindChild(group))
            m_served.insert(group);
    }

    StrataSettings::ChangeDispatcher m_dispatcher{[this] { TryMissing(StrataSettings::Attempt::WhileItAnswers); }};
    StrataSettings::Observer* const m_observer;
    std::set<std::type_index> m_served;
};
