#include "handlers/MainGuiHandler.h"

#include "handlers/MainGuiVariables.h"
#include "logging/FunctionLog.h"

using namespace MainGuiVariables;
using StrataSettings::SetResult;

void MainGuiHandler::OnUrlToSave(const VariableIdentifier& id)
{
    if (id == kSaveAllowedUrl && !ShowUAC(true))
    {
        LOG(FunctionLog(L"MainGuiHandler::OnNotify"), 3, L"%s: Could not show UAC.");
        return;
    }
    if (SaveAllowedUrl(m_variables.Get(id).toString()))
        Q_EMIT ReloadAllowedWebsitesList();
    ReleaseUnusedAdminHandle();
}

void MainGuiHandler::SaveFeatureSwitch(const VariableIdentifier& id)
{
    const FunctionLog log(L"MainGuiHandler::SaveFeatureSwitch");
    LOG(log, 5, L"%s: %ls", LogText(id).c_str());

    const QString move = m_variables.Get(id).toString();
    if (move != QLatin1String("MoveOn") && move != QLatin1String("MoveOff"))
        return; // a settled value, which this handler wrote itself
    if (!m_adminHandle)
        return;

    VdnSettings& settings = m_adminHandle->WritableSettings();
    const bool on = move == QLatin1String("MoveOn");
    const VariableIdentifier* status = nullptr;
    bool stored = true;
    const auto set = [&](StrataSettings::Property<bool>& property) {
        stored &= property.Set(on) != SetResult::Enforced;
    };
    if (id == kWebFilterState)
    {
        set(settings.categories.enabled);
        status = &kWebFilterStatus;
    }
    else if (id == kTimeLimitState)
    {
        set(settings.time.enabled);
        set(settings.time.quotas.enabled);
        status = &kTimeLimitStatus;
    }
    else if (id == kSafeSearchState)
    {
        set(settings.searchResultFilter.enabled);
        status = &kSafeSearchStatus;
    }
    else
        return;

    stored &= m_adminHandle->Save();
    PublishSwitch(id, *status, on);
    if (!stored)
        LoadUserData();
}

bool MainGuiHandler::SaveAllowedUrl(const QString& url)
{
    const FunctionLog log(L"MainGuiHandler::SaveAllowedUrl");
    LOG(log, 5, L"%s: %ls", url.toStdWString().c_str());

    const std::string address = url.toStdString();
    if (address.empty())
    {
        LOG(log, 3, L"%s: Cannot save an empty URL");
        return false;
    }
    if (!Settings::Site::IsAddress(address))
    {
        LOG(log, 3, L"%s: Cannot save a URL that is no address");
        return false;
    }
    if (m_adminHandle)
    {
        m_adminHandle->WritableSettings().internal.sites.Add(Settings::Site(address, true, std::string()));
        m_adminHandle->Save();
    }
    return true;
}

bool MainGuiHandler::ShowUAC(bool reopen)
{
    const EntryLog log(L"MainGuiHandler::ShowUAC");
    if (m_adminHandle && !reopen)
        return true;
    if (m_adminHandle)
        UninitialiseAdminHandle();
    return OpenAdminHandle();
}

bool MainGuiHandler::OpenAdminHandle()
{
    m_adminHandle = std::make_shared<ElevatedSettings>(nullptr, m_userSid, kSettingsClientId, true);
    if (!m_adminHandle->HasHandle())
    {
        UninitialiseAdminHandle();
        return false;
    }
    m_adminHandle->Load();
    return true;
}

void MainGuiHandler::SetUnusedUI(std::uint32_t bits)
{
    const FunctionLog log(L"MainGuiHandler::SetUnusedUI");
    LOG(log, 5, L"%s: %u %u", bits, m_unusedUI);
    m_unusedUI &= ~bits;
    ReleaseUnusedAdminHandle();
}

void MainGuiHandler::ReleaseUnusedAdminHandle()
{
    if (m_unusedUI == 0)
        UninitialiseAdminHandle();
}

void MainGuiHandler::UninitialiseAdminHandle()
{
    const EntryLog log(L"MainGuiHandler::UninitialiseAdminHandle");
    m_adminHandle.reset();
}
