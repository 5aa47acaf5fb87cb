#include "settings/binding/Scope.h"

#include "settings/binding/Model.h"
#include "settings/binding/Observer.h"
#include "settings/binding/PropertyBase.h"
#include "settings/binding/SettingsListener.h"

#include <QString>

#include <algorithm>
#include <utility>
#include <vector>

namespace StrataSettings
{

Scope::Scope(std::unique_ptr<Model> settings, std::unique_ptr<OrbStrataSettingsListener> listener, std::wstring logName,
             const std::string& sid, const wchar_t* storeArgument, const wchar_t* clientId, bool elevated)
    : m_settings(std::move(settings)), m_logName(std::move(logName)), m_sid(sid), m_storeArgument(storeArgument),
      m_clientId(clientId), m_elevated(elevated), m_listener(std::move(listener))
{
    Open(L"ScopedSettings");
    LOG(Log(L"ScopedSettings"), 5, L"%s: %hs/%p", m_sid.c_str(), static_cast<const void*>(m_handle.Get()));
}

Scope::~Scope() = default;

bool Scope::ResetHandle()
{
    if (m_handle)
    {
        LOG(Log(L"ResetHandle"), 2, L"%s: Reseting non-null handle not allowed!");
        return false;
    }
    if (!Open(L"ResetHandle"))
        return false;
    LOG(Log(L"ResetHandle"), 5, L"%s: %hs/%p", m_sid.c_str(), static_cast<const void*>(m_handle.Get()));
    return true;
}

bool Scope::Open(const wchar_t* function)
{
    const std::wstring sid = QString::fromStdString(m_sid).toStdWString();
    m_handle = StoreHandle::Open(m_elevated, m_storeArgument.c_str(), sid.c_str(), m_clientId.c_str(), m_openResult);
    UseHandles();
    if (!m_handle)
        m_settings->ForEachProperty([](PropertyBase& property) { property.MarkReadFailed(); });
    if (m_openResult != ORB_STRATA_SUCCESS)
        LOG(Log(function), 2, L"%s: Failed with error %d, strata handle not available", static_cast<int>(m_openResult));
    return static_cast<bool>(m_handle);
}

void Scope::UseForSaving(StoreHandle handle)
{
    m_secondHandle = std::move(handle);
    UseHandles();
}

void Scope::UseHandles()
{
    m_effectiveHandle = m_secondHandle ? m_secondHandle.Get() : m_handle.Get();
    m_settings->SetHandle(m_effectiveHandle);
}

bool Scope::Load()
{
    if (!m_handle)
    {
        LOG(Log(L"Load"), 2, L"%s: Cannot load null handle. SID='%hs'", m_sid.c_str());
        return false;
    }
    m_settings->Load(m_handle.Get());
    if (m_elevated || m_secondHandle)
        m_settings->ApplyConstraints(m_effectiveHandle);
    return true;
}

bool Scope::Save()
{
    const OrbStrataHandle handle = m_effectiveHandle;
    if (!handle)
    {
        LOG(Log(L"Save"), 2, L"%s: Cannot save null handle. SID='%hs'", m_sid.c_str());
        return false;
    }
    return m_settings->Save(handle);
}

bool Scope::LoadMissing(Observer* observer, Attempt attempt)
{
    const bool seen = std::exchange(m_following, true);
    if (!seen)
        m_observer = observer;
    if (m_effectiveHandle)
        m_listener->Subscribe(attempt);
    if (m_loaded)
        ReadMissing(attempt);
    else if (m_handle)
        m_loaded = Load();
    const bool told = TellNews(seen);
    if (m_observer && IsMissing())
        m_observer->OnMissing();
    return told;
}

bool Scope::LoadOnce(Observer* observer)
{
    LoadMissing(observer, Attempt::Everything);
    return m_loaded;
}

bool Scope::IsMissing() const
{
    if (!m_handle)
        return !m_elevated; // the user was asked
    bool missing = !m_loaded || !m_listener->IsComplete();
    m_settings->ForEachProperty([&missing](const PropertyBase& property) { missing |= property.IsMissing(); });
    return missing;
}

void Scope::ReadMissing(Attempt attempt)
{
    std::vector<PropertyBase*> missing;
    m_settings->ForEachProperty([&missing, attempt](PropertyBase& property) {
        if (property.IsMissing() || (attempt == Attempt::Everything && property.IsUnread()))
            missing.push_back(&property);
    });
    if (const auto refused = std::find(missing.begin(), missing.end(), m_refused); refused != missing.end())
        std::rotate(missing.begin(), std::next(refused), missing.end());
    for (PropertyBase* property : missing)
    {
        property->Refresh(m_effectiveHandle, nullptr);
        if (!property->IsMissing())
            continue;
        m_refused = property;
        if (attempt == Attempt::WhileItAnswers)
            return;
    }
}

bool Scope::Take(std::wstring_view key, const char* objectString)
{
    PropertyBase* const property = m_settings->Find(key);
    if (!property)
        return false;
    property->Refresh(m_effectiveHandle, objectString);
    if (property->TakeNews() && m_observer)
        m_observer->OnPropertyChanged(*property);
    if (property->IsMissing() && m_observer)
        m_observer->OnMissing();
    return true;
}

bool Scope::TellNews(bool tell)
{
    bool told = false;
    m_settings->ForEachProperty([this, tell, &told](PropertyBase& property) {
        if (!property.TakeNews() || !tell)
            return;
        told = true;
        if (m_observer)
            m_observer->OnPropertyChanged(property);
    });
    return told;
}

} // namespace StrataSettings
