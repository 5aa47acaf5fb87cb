#pragma once

#include "settings/binding/ChangeDispatcher.h"
#include "settings/binding/Model.h"
#include "settings/binding/Scope.h"

#include <set>
#include <string>
#include <typeindex>

/// Which store the suite's client programs share, and what they are known as there.
inline constexpr const wchar_t* kSettingsStore = L"safe";
inline constexpr const wchar_t* kSettingsClientId = L"vdn_gui";

/// A controller owns settings scopes, the one whose settings are shown and perhaps others, follows the store with them
/// and tells its subscribers of changes. Created, used and destroyed on one thread, the one that runs the event loop.
class ControllerBase
{
public:
    using ChangeCallback = StrataSettings::ChangeCallback;
    using Registration = StrataSettings::ChangeDispatcher::Registration;

    ControllerBase(const ControllerBase&) = delete;
    ControllerBase& operator=(const ControllerBase&) = delete;
    virtual ~ControllerBase() = default; // slot 0

    /// Opens what is not open yet, unless the constructor has just tried, and loads what is not loaded yet or could not
    /// be read. An elevated scope asks the user again. False when there is no store handle.
    virtual bool Load();

    /// Writes what was changed and is not enforced. False without a handle or when the store refused a property.
    virtual bool Save();

    virtual bool HasHandle();

    /// The settings to show, and to change before saving. Without a store handle they are the defaults.
    virtual const StrataSettings::Model& Settings() = 0;
    virtual StrataSettings::Model& WritableSettings() = 0;

    /// From now on calls `callback` with the key when the store tells of a change of it, through the event loop and on
    /// the controller's thread, until the registration is destroyed. An unknown key is not accepted.
    [[nodiscard]] virtual Registration Subscribe(const std::wstring& key, ChangeCallback callback);

    /// Whether this controller is the one that serves a group.
    virtual bool Serves(const std::type_info& group) const;

    /// The settings' group of this type, or null.
    virtual StrataSettings::Model* FindChild(const std::type_info& group); // slot 8

    [[nodiscard]] Registration Subscribe(const StrataSettings::PropertyBase& property, ChangeCallback callback);

    /// Tries to open, subscribe and read what is missing, if anything is. True when subscribers will be told of
    /// something. Happens by itself, too, every three seconds as long as something is missing.
    bool LoadMissing() { return TryMissing(StrataSettings::Attempt::Everything); }

    /// Adds the groups that the tree has to those that the controller serves.
    template <class... Groups>
    void Serve()
    {
        (ServeIfPresent(typeid(Groups)), ...);
    }

protected:
    /// `observer`, where it is not null, is told of changes, on any thread, in place of the subscribers; then nothing
    /// is tried again by itself.
    explicit ControllerBase(StrataSettings::Observer* observer);

    /// The scope whose settings are shown.
    virtual StrataSettings::Scope& Current() = 0;

    /// Asks nobody.
    virtual bool TryMissing(StrataSettings::Attempt attempt);

    StrataSettings::Observer* ChangeObserver() const noexcept { return m_observer; }

private:
    void ServeIfPresent(const std::type_info& group);

    StrataSettings::ChangeDispatcher m_dispatcher;
    StrataSettings::Observer* const m_observer;
    std::set<std::type_index> m_served;
};
