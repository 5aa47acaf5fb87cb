#include "settings/binding/PropertyBase.h"

#include "settings/binding/Model.h"

#include <utility>

namespace StrataSettings
{

PropertyBase::PropertyBase(Model* parent, Key key, const wchar_t* typeName)
    : m_key(std::move(key)), m_parent(parent), m_typeName(typeName)
{
    if (m_parent)
        m_parent->Register(*this);
}

void PropertyBase::Load(OrbStrataHandle handle)
{
    if (!handle)
        return;
    const std::lock_guard lock(m_mutex);
    LoadLocked(handle);
}

void PropertyBase::Load()
{
    Load(FindHandle());
}

bool PropertyBase::Save(OrbStrataHandle handle)
{
    if (!handle || IsEnforced())
        return true;
    const std::lock_guard lock(m_mutex);
    if (m_state != ModificationState::Changed)
        return true;

    const OrbStrataResult result = Write(handle);
    if (result == ORB_STRATA_SUCCESS)
    {
        m_state = ModificationState::InStep;
        m_reading = Reading::Whole;
    }
    else if (result == ORB_STRATA_ACCESS_DENIED)
        LOG(Log(L"Save"), 5, L"%s: '%ls' saving failed, access denied", m_key.c_str());
    else
        LOG(Log(L"Save"), 1, L"%s: '%ls' saving failed, result %u", m_key.c_str(), result);
    return result == ORB_STRATA_SUCCESS;
}

bool PropertyBase::Save()
{
    return Save(FindHandle());
}

void PropertyBase::UpdateConstraints(const std::uint32_t* constraints)
{
    if (constraints)
        m_constraints.exchange(*constraints);
}

ModificationState PropertyBase::State() const
{
    const std::lock_guard lock(m_mutex);
    return m_state;
}

bool PropertyBase::IsMissing() const
{
    const std::lock_guard lock(m_mutex);
    return m_constraintsMissing || (m_reading == Reading::Failed && m_state != ModificationState::Changed);
}

bool PropertyBase::TakeNews()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_news, false);
}

bool PropertyBase::WasReadWhole() const
{
    const std::lock_guard lock(m_mutex);
    return m_reading == Reading::Whole;
}

bool PropertyBase::ReadFailed() const
{
    const std::lock_guard lock(m_mutex);
    return m_reading == Reading::Failed;
}

void PropertyBase::MarkReadFailed()
{
    const std::lock_guard lock(m_mutex);
    if (m_state != ModificationState::Changed)
        m_reading = Reading::Failed;
}

void PropertyBase::MarkChanged()
{
    const std::lock_guard lock(m_mutex);
    m_state = ModificationState::Changed;
}

OrbStrataHandle PropertyBase::FindHandle() const noexcept
{
    return m_parent ? m_parent->FindHandle() : m_ownHandle;
}

OrbStrataResult PropertyBase::LoadLocked(OrbStrataHandle handle)
{
    if (m_state == ModificationState::Changed)
    {
        LoadConstraints(handle);
        if (!IsEnforced())
            return ORB_STRATA_SUCCESS;
        m_state = ModificationState::Default; // it will never be saved
    }

    m_reading = Reading::Whole;
    const OrbStrataResult result = Read(handle);
    if (result == ORB_STRATA_SUCCESS)
    {
        m_state = ModificationState::InStep;
        LoadConstraints(handle);
    }
    else if (result == ORB_STRATA_NOT_FOUND)
    {
        m_constraintsMissing = false;
        LOG(Log(L"Load"), 5, L"%s: '%ls' not found, ok if not yet created.", m_key.c_str());
    }
    else
    {
        LOG(Log(L"Load"), 1, L"%s: '%ls' reading failed, error %u", m_key.c_str(), result);
        m_reading = result == ORB_STRATA_WRONG_TYPE ? Reading::Unusable : Reading::Failed;
        if (m_reading == Reading::Unusable)
            TakeDefault();
    }
    return result;
}

void PropertyBase::LoadConstraints(OrbStrataHandle handle)
{
    OrbStrataResult result = ORB_STRATA_INVALID_HANDLE;
    const std::uint32_t constraints = OrbStrata_GetConstraints(handle, m_key.c_str(), &result);
    m_constraintsMissing = result != ORB_STRATA_SUCCESS && result != ORB_STRATA_NOT_FOUND;
    if (!m_constraintsMissing)
        TakeConstraints(result == ORB_STRATA_SUCCESS ? constraints : 0);
    if (result != ORB_STRATA_SUCCESS)
        LOG(Log(L"Load"), 5, L"%s: Getting constraints for '%ls' failed, error %u", m_key.c_str(), result);
}

MethodLog PropertyBase::Log(const wchar_t* function) const
{
    return {std::wstring(L"StrataSettings::Property<") + m_typeName + L">", function};
}

void PropertyBase::TakeConstraints(std::uint32_t constraints)
{
    m_news |= m_constraints.exchange(constraints) != constraints;
}

} // namespace StrataSettings
