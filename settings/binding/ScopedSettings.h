#pragma once

#include "logging/FunctionLog.h"
#include "logging/LogName.h"
#include "settings/binding/Model.h"
#include "settings/binding/PropertyBase.h"
#include "settings/binding/StoreHandle.h"
#include "settings/binding/TypeName.h"

#include <QString>

#include <string>

namespace StrataSettings
{

template <class Tree>
class ScopedSettings;

template <class Tree>
struct TypeName<ScopedSettings<Tree>>
{
    static constexpr auto value = L"StrataSettings::ScopedSettings<class " + TypeName<Tree>::value + L">";
};

/// One scope: a settings tree bound to one store handle for one SID. It opens its handle at once; without one it keeps
/// the defaults, until ResetHandle() succeeds. Confined to one thread but for Save() and what the properties allow.
template <class Tree>
class ScopedSettings
{
public:
    /// `sid` is "S-1-5-18" for the machine, a user's SID, or empty for the calling user. `elevated` asks the user.
    ScopedSettings(const std::string& sid, const wchar_t* storeArgument, const wchar_t* clientId, bool elevated)
        : m_sid(sid), m_storeArgument(storeArgument), m_clientId(clientId), m_elevated(elevated)
    {
        Open(kConstruct);
        LOG(kConstruct, 5, L"%s: %hs/%p", m_sid.c_str(), Address());
    }

    ScopedSettings(const ScopedSettings&) = delete;
    ScopedSettings& operator=(const ScopedSettings&) = delete;

    /// Opens the handle again, when there is none. False when there is one, or when it cannot be opened.
    bool ResetHandle()
    {
        if (m_handle)
        {
            LOG(kResetHandle, 2, L"%s: Reseting non-null handle not allowed!");
            return false;
        }
        if (!Open(kResetHandle))
            return false;
        LOG(kResetHandle, 5, L"%s: %hs/%p", m_sid.c_str(), Address());
        return true;
    }

    /// Gives the scope a second handle, which is used in place of the first one for following the store and for saving.
    void UseForSaving(StoreHandle handle)
    {
        m_secondHandle = std::move(handle);
        m_settings.SetHandle(EffectiveHandle());
    }

    bool Load()
    {
        if (!m_handle)
        {
            LOG(kLoad, 2, L"%s: Cannot load null handle. SID='%hs'", m_sid.c_str());
            return false;
        }
        m_settings.Load(m_handle.Get());
        if (m_elevated || m_secondHandle)
            m_settings.ApplyConstraints(EffectiveHandle());
        return true;
    }

    /// False without a handle, or when the store refused a changed property.
    bool Save()
    {
        if (!EffectiveHandle())
        {
            LOG(kSave, 2, L"%s: Cannot save null handle. SID='%hs'", m_sid.c_str());
            return false;
        }
        return m_settings.Save(EffectiveHandle());
    }

    const std::string& Sid() const noexcept { return m_sid; }
    OrbStrataResult OpenResult() const noexcept { return m_openResult; }
    OrbStrataHandle EffectiveHandle() const noexcept { return m_secondHandle ? m_secondHandle.Get() : m_handle.Get(); }

    Tree& Settings() noexcept { return m_settings; }
    const Tree& Settings() const noexcept { return m_settings; }

private:
    bool Open(const FunctionLog& log)
    {
        const std::wstring sid = QString::fromStdString(m_sid).toStdWString();
        const auto open = m_elevated ? OrbStrata_OpenElevatedHandle : OrbStrata_OpenHandle;
        m_handle = StoreHandle(open(m_storeArgument.c_str(), sid.c_str(), m_clientId.c_str(), &m_openResult));
        m_settings.SetHandle(EffectiveHandle());
        if (!m_handle)
            m_settings.ForEachProperty([](PropertyBase& property) { property.MarkReadFailed(); });
        if (m_openResult != ORB_STRATA_SUCCESS)
            LOG(log, 2, L"%s: Failed with error %d, strata handle not available", static_cast<int>(m_openResult));
        return static_cast<bool>(m_handle);
    }

    const void* Address() const noexcept { return m_handle.Get(); }

    static constexpr auto kName = TypeName<ScopedSettings>::value + L"::";
    static constexpr auto kConstructName = kName + L"ScopedSettings";
    static constexpr auto kResetHandleName = kName + L"ResetHandle";
    static constexpr auto kLoadName = kName + L"Load";
    static constexpr auto kSaveName = kName + L"Save";
    static constexpr FunctionLog kConstruct{kConstructName.Text()};
    static constexpr FunctionLog kResetHandle{kResetHandleName.Text()};
    static constexpr FunctionLog kLoad{kLoadName.Text()};
    static constexpr FunctionLog kSave{kSaveName.Text()};

    const std::string m_sid;
    Tree m_settings;
    StoreHandle m_handle;
    StoreHandle m_secondHandle;
    const std::wstring m_storeArgument;
    const std::wstring m_clientId;
    const bool m_elevated;
    OrbStrataResult m_openResult = ORB_STRATA_INVALID_HANDLE;
};

} // namespace StrataSettings
