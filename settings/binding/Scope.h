#pragma once

#include "logging/FunctionLog.h"
#include "settings/binding/StoreHandle.h"

#include <atomic>
#include <memory>
#include <string>
#include <string_view>

namespace StrataSettings
{

class Model;
class Observer;
class OrbStrataSettingsListener;
class PropertyBase;

/// How much is asked of the store at once when something is missing.
enum class Attempt
{
    Everything,    ///< Somebody waits for it.
    WhileItAnswers ///< Up to the first refusal, and where that was goes on the next time.
};

/// One scope: a settings tree bound to one store handle for one SID. It opens its handle at once; without one it keeps
/// the defaults, until ResetHandle() succeeds. Once it follows the store, the observer is told of every change of what
/// it holds, but for what the first load brings: nobody has seen anything else.
///
/// Confined to one thread but for Save(), EffectiveHandle() and Take(), and what the properties allow.
class Scope
{
public:
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    virtual ~Scope();

    /// Opens the handle again, when there is none. False when there is one, or when it cannot be opened.
    bool ResetHandle();

    /// Gives the scope a second handle, which is used in place of the first one for following the store and for saving.
    void UseForSaving(StoreHandle handle);

    bool Load();

    /// False without a handle, or when the store refused a changed property.
    bool Save();

    /// Subscribes and loads what is not subscribed and not loaded yet. Following starts before loading, so that no
    /// change falls between. `observer` may be null and is the first call's. True when there was anything to tell it.
    bool LoadMissing(Observer* observer, Attempt attempt);

    /// The same, for everything. Whether the scope is loaded.
    bool LoadOnce(Observer* observer);

    /// Whether LoadMissing() was called.
    bool IsFollowing() const noexcept { return m_following; }
    bool IsLoaded() const noexcept { return m_loaded; }

    /// Reads a property anew after a notification, with the text that came with it. False when the key is unknown.
    bool Take(std::wstring_view key, const char* objectString);

    const std::string& Sid() const noexcept { return m_sid; }
    bool IsElevated() const noexcept { return m_elevated; }
    OrbStrataResult OpenResult() const noexcept { return m_openResult; }
    OrbStrataHandle EffectiveHandle() const noexcept { return m_effectiveHandle; }
    Model& Settings() const noexcept { return *m_settings; }

protected:
    /// `settings` is the tree with its defaults, `logName` what the log calls the scope's class. See ScopedSettings for
    /// the rest.
    Scope(std::unique_ptr<Model> settings, std::unique_ptr<OrbStrataSettingsListener> listener, std::wstring logName,
          const std::string& sid, const wchar_t* storeArgument, const wchar_t* clientId, bool elevated);

private:
    bool Open(const wchar_t* function);
    void UseHandles();
    void ReadMissing(Attempt attempt);
    bool TellNews(bool tell);

    /// Whether there is anything left for LoadMissing(), or a handle to be opened before.
    bool IsMissing() const;

    MethodLog Log(const wchar_t* function) const { return {m_logName, function}; }

    const std::unique_ptr<Model> m_settings;
    const std::wstring m_logName;
    const std::string m_sid;
    const std::wstring m_storeArgument;
    const std::wstring m_clientId;
    const bool m_elevated;
    OrbStrataResult m_openResult = ORB_STRATA_INVALID_HANDLE;

    StoreHandle m_handle;
    StoreHandle m_secondHandle;
    std::atomic<OrbStrataHandle> m_effectiveHandle{nullptr}; // one of the two

    bool m_following = false;
    bool m_loaded = false;
    const PropertyBase* m_refused = nullptr; // where an attempt ended
    Observer* m_observer = nullptr;
    const std::unique_ptr<OrbStrataSettingsListener> m_listener; // ends before its handle
};

} // namespace StrataSettings
