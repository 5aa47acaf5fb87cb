#pragma once

#include "settings/binding/Controller.h"

/// The settings of the whole machine.
template <class Tree>
class SystemSettingsController final : public Controller<Tree>
{
public:
    static constexpr const char* kSystemSid = "S-1-5-18";

    SystemSettingsController(StrataSettings::Observer* observer, const wchar_t* clientId)
        : Controller<Tree>(observer, kSystemSid, clientId, false)
    {}
};
