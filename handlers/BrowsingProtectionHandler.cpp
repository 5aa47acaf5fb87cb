#include "handlers/BrowsingProtectionHandler.h"

#include "handlers/SharedVariables.h"
#include "logging/FunctionLog.h"
#include "settings/model/Addresses.h"

#include <QDesktopServices>
#include <QUrl>

using namespace SharedVariables;

namespace
{

const VariableIdentifier kOpenChromeWebStore("@Veridan\\Settings\\Triggers:open_chrome_web_store");

using Options = Settings::BrowsingProtection;
constexpr auto kOptions = &VdnSettings::browsingProtection;

constexpr ShownVariable kBrowsingOptions[] = {
    {"@BrowsingProtection\\Data:suspicious_sites_protection", Value<kOptions, &Options::blockSuspiciousWebsites>},
    {"@BrowsingProtection\\Data:illegal_sites_protection", Value<kOptions, &Options::blockIllegalWebsites>},
    {"@BrowsingProtection\\Data:show_searchengines_rating", Value<kOptions, &Options::showLinkReputations>},
    {"@BrowsingProtection\\Data:suspicious_sites_protection_readonly",
     ReadOnly<kOptions, &Options::blockSuspiciousWebsites>},
    {"@BrowsingProtection\\Data:illegal_sites_protection_readonly", ReadOnly<kOptions, &Options::blockIllegalWebsites>},
    {"@BrowsingProtection\\Data:show_searchengines_rating_readonly", ReadOnly<kOptions, &Options::showLinkReputations>},
};

} // namespace

const NotifyRule BrowsingProtectionHandler::kNotifyRules[] = {
    {kLoadData, &BrowsingProtectionHandler::Load},
    NotifyRule(kSave),
    {kOpenChromeWebStore, &BrowsingProtectionHandler::OpenChromeWebStore},
};

BrowsingProtectionHandler::BrowsingProtectionHandler(const std::shared_ptr<SystemSettings>& systemSettings)
    : Handler(L"BrowsingProtectionHandler::OnNotify"), m_systemSettings(systemSettings)
{
    const EntryLog log(L"BrowsingProtectionHandler::BrowsingProtectionHandler");
}

BrowsingProtectionHandler::~BrowsingProtectionHandler()
{
    const EntryLog log(L"BrowsingProtectionHandler::~BrowsingProtectionHandler");
}

bool BrowsingProtectionHandler::Initialize(IPlugInManager* manager)
{
    const EntryLog log(L"BrowsingProtectionHandler::Initialize");
    if (!m_variables.Obtain(log, manager))
        return false;
    m_variables.Register(kBrowsingOptions);
    Follow(kNotifyRules);
    return true;
}

void BrowsingProtectionHandler::Load()
{
    const EntryLog log(L"BrowsingProtectionHandler::Load");
    const auto system = m_systemSettings.lock();
    if (!system)
    {
        LOG(log, 2, L"%s: Can't load settings: system settings manager is not set");
        return;
    }
    m_variables.Show(kBrowsingOptions, system->Settings());
}

void BrowsingProtectionHandler::OpenChromeWebStore()
{
    const FunctionLog log(L"BrowsingProtectionHandler::OpenChromeWebStore");
    LOG(log, 5, L"%s: Opening Chrome web store");
    QDesktopServices::openUrl(QUrl(QString::fromLatin1(Addresses::kChromeWebStore), QUrl::TolerantMode));
}
