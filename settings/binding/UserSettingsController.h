#pragma once

#include "settings/binding/ChooseUser.h"
#include "settings/binding/ScopedSettings.h"
#include "settings/binding/SystemSettingsController.h"
#include "settings/binding/UserScopesController.h"

/// The settings of the machine's users, with trees of this type.
template <class Tree>
class UserSettingsController final : public UserScopesController
{
public:
    using SystemController = SystemSettingsController<Tree>;
    using Scope = StrataSettings::ScopedSettings<Tree>;

    /// A controller for the user of the active console session, else for the user that the process runs as. `loadNow`
    /// loads that user's settings at once instead of on first use.
    static std::shared_ptr<UserSettingsController> Create(const std::shared_ptr<SystemController>& system, bool loadNow)
    {
        const std::string sid = ChooseUserSid(MethodLog(LogName(), L"Create"));
        auto controller = std::make_shared<UserSettingsController>(sid, system, true);
        if (loadNow)
            controller->Load();
        return controller;
    }

    UserSettingsController(std::string sid, std::shared_ptr<SystemController> system, bool delayedSave)
        : UserScopesController(LogName(), std::move(sid), std::move(system), delayedSave)
    {}

    Scope& Emplace(const std::string& sid) { return static_cast<Scope&>(UserScopesController::Emplace(sid)); }

    const Tree& Settings() override { return WritableSettings(); }
    Tree& WritableSettings() override { return static_cast<Scope&>(Current()).Settings(); }

private:
    std::unique_ptr<StrataSettings::Scope> Open(const std::string& sid) const override
    {
        return std::make_unique<Scope>(sid, kSettingsStore, kSettingsClientId, false);
    }

    static std::wstring LogName()
    {
        return std::wstring(L"UserSettingsController<class ") + StrataSettings::kTypeName<Tree> + L">";
    }
};
