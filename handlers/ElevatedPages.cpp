#include "handlers/ElevatedPages.h"

#include "logging/FunctionLog.h"

bool ElevatedPages::ShowUAC(bool reopen)
{
    const EntryLog log(L"MainGuiHandler::ShowUAC");
    if (m_settings && !reopen)
        return true;
    if (m_settings)
        Release();
    return Open();
}

bool ElevatedPages::Open()
{
    m_settings = std::make_shared<ElevatedSettings>(nullptr, m_userSid, kSettingsClientId, true);
    if (!m_settings->HasHandle())
    {
        Release();
        return false;
    }
    m_settings->Load();
    return true;
}

void ElevatedPages::Remove(std::uint32_t pages)
{
    const FunctionLog log(L"MainGuiHandler::SetUnusedUI");
    LOG(log, 5, L"%s: %u %u", pages, m_open);
    m_open &= ~pages;
    ReleaseUnused();
}

void ElevatedPages::ReleaseUnused()
{
    if (m_open == 0)
        Release();
}

void ElevatedPages::Release()
{
    const EntryLog log(L"MainGuiHandler::UninitialiseAdminHandle");
    m_settings.reset();
}
