#include "settings/binding/ControllerBase.h"

#include "settings/binding/PropertyBase.h"

#include <utility>

using StrataSettings::Model;
using StrataSettings::Scope;

ControllerBase::ControllerBase(StrataSettings::Observer* observer)
    : m_dispatcher([this] { TryMissing(StrataSettings::Attempt::WhileItAnswers); }),
      m_observer(observer ? observer : &m_dispatcher)
{}

bool ControllerBase::Load()
{
    Scope& scope = Current();
    if (!HasHandle() && scope.IsFollowing())
        scope.ResetHandle();
    return scope.LoadOnce(m_observer) || scope.Load();
}

bool ControllerBase::Save()
{
    return Current().Save();
}

bool ControllerBase::TryMissing(StrataSettings::Attempt attempt)
{
    Scope& scope = Current();
    if (!HasHandle() && !scope.IsElevated())
        scope.ResetHandle();
    return scope.LoadMissing(m_observer, attempt);
}

bool ControllerBase::HasHandle()
{
    return Current().EffectiveHandle() != nullptr;
}

ControllerBase::Registration ControllerBase::Subscribe(const std::wstring& key, ChangeCallback callback)
{
    if (!Settings().Find(key))
        return {};
    return m_dispatcher.Subscribe(key, std::move(callback));
}

ControllerBase::Registration ControllerBase::Subscribe(const StrataSettings::PropertyBase& property,
                                                       ChangeCallback callback)
{
    return Subscribe(property.GetKey().String(), std::move(callback));
}

bool ControllerBase::Serves(const std::type_info& group) const
{
    return m_served.count(group) != 0;
}

Model* ControllerBase::FindChild(const std::type_info& group)
{
    return WritableSettings().FindChild(group);
}

void ControllerBase::ServeIfPresent(const std::type_info& group)
{
    if (FindChild(group))
        m_served.insert(group);
}
