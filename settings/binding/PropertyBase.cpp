#include "settings/binding/PropertyBase.h"

#include "settings/binding/Model.h"

namespace StrataSettings
{

PropertyBase::PropertyBase(Model* parent, Key key, const LogNames& logNames)
    : m_key(std::move(key)), m_parent(parent), m_logNames(logNames)
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
        m_readWhole = true;
    }
    else if (result == ORB_STRATA_ACCESS_DENIED)
        LOG(m_logNames.save, 5, L"%s: '%ls' saving failed, access denied", m_key.c_str());
    else
        LOG(m_logNames.save, 1, L"%s: '%ls' saving failed, result %u", m_key.c_str(), result);
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

bool PropertyBase::WasReadWhole() const
{
    const std::lock_guard lock(m_mutex);
    return m_readWhole;
}

bool PropertyBase::ReadFailed() const
{
    const std::lock_guard lock(m_mutex);
    return m_readFailed;
}

void PropertyBase::MarkReadFailed()
{
    const std::lock_guard lock(m_mutex);
    m_readFailed = true;
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
    m_readWhole = true;
    const OrbStrataResult result = Read(handle);
    m_readFailed = result != ORB_STRATA_SUCCESS && result != ORB_STRATA_NOT_FOUND;
    if (result == ORB_STRATA_SUCCESS)
    {
        m_state = ModificationState::InStep;
        OrbStrataResult constraintsResult = ORB_STRATA_INVALID_HANDLE;
        const std::uint32_t constraints = OrbStrata_GetConstraints(handle, m_key.c_str(), &constraintsResult);
        if (constraintsResult == ORB_STRATA_SUCCESS)
            UpdateConstraints(&constraints);
        else
            LOG(m_logNames.load, 5, L"%s: Getting constraints for '%ls' failed, error %u", m_key.c_str(),
                constraintsResult);
    }
    else if (result == ORB_STRATA_NOT_FOUND)
        LOG(m_logNames.load, 5, L"%s: '%ls' not found, ok if not yet created.", m_key.c_str());
    else
    {
        m_readWhole = false;
        LOG(m_logNames.load, 1, L"%s: '%ls' reading failed, error %u", m_key.c_str(), result);
    }
    return result;
}

} // namespace StrataSettings
