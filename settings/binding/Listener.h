#pragma once

#include "settings/binding/SettingsListener.h"

namespace StrataSettings
{

/// The listener of a scope of this type.
template <class Settings>
class Listener final : public OrbStrataSettingsListener
{
public:
    explicit Listener(Scope& scope)
        : OrbStrataSettingsListener(scope, L"StrataSettings::Listener<class " + Settings::LogName() + L" >")
    {}
};

} // namespace StrataSettings
