#include "handlers/BrowsingProtectionHandler.h"

#include "logging/FunctionLog.h"
#include "settings/model/Addresses.h"

#include <QDesktopServices>
#include <QUrl>

namespace
{

const VariableIdentifier kSuspicious("@BrowsingProtection\\Data:suspicious_sites_protection");
const VariableIdentifier kIllegal("@BrowsingProtection\\Data:illegal_sites_protection");
const VariableIdentifier kRating("@BrowsingProtection\\Data:show_searchengines_rating");
const VariableIdentifier kSuspiciousReadOnly("@BrowsingProtection\\Data:suspicious_sites_protection_readonly");
const VariableIdentifier kIllegalReadOnly("@BrowsingProtection\\Data:illegal_sites_protection_readonly");
const VariableIdentifier kRatingReadOnly("@BrowsingProtection\\Data:show_searchengines_rating_readonly");
const VariableIdentifier kLoadData("@Veridan\\Settings\\Triggers:load_data");
const VariableIdentifier kSave("@Veridan\\Settings\\Triggers:save");
const VariableIdentifier kOpenChromeWebStore("@Veridan\\Settings\\Triggers:open_chrome_web_store");

} // namespace

const NotifyRule<BrowsingProtectionHandler> BrowsingProtectionHandler::kNotifyRules[] = {
    {kLoadData, &BrowsingProtectionHandler::Load},
    NotifyRule<BrowsingProtectionHandler>(kSave),
    {kOpenChromeWebStore, &BrowsingProtectionHandler::OpenChromeWebStore},
};

BrowsingProtectionHandler::BrowsingProtectionHandler(const std::shared_ptr<SystemSettings>& systemSettings)
    : m_systemSettings(systemSettings)
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
    m_variables.Register({kSuspicious, kIllegal, kRating, kSuspiciousReadOnly, kIllegalReadOnly, kRatingReadOnly});
    m_variables.SubscribeRules(kNotifyRules);
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
    const Settings::BrowsingProtection& settings = system->Settings().browsingProtection;
    m_variables.Set(kSuspicious, settings.blockSuspiciousWebsites.Get());
    m_variables.Set(kIllegal, settings.blockIllegalWebsites.Get());
    m_variables.Set(kRating, settings.showLinkReputations.Get());
    m_variables.Set(kSuspiciousReadOnly, settings.blockSuspiciousWebsites.IsEnforced());
    m_variables.Set(kIllegalReadOnly, settings.blockIllegalWebsites.IsEnforced());
    m_variables.Set(kRatingReadOnly, settings.showLinkReputations.IsEnforced());
}

void BrowsingProtectionHandler::OnNotify(VariableIdentifier identifier)
{
    const FunctionLog log(L"BrowsingProtectionHandler::OnNotify");
    LOG(log, 5, L"%s: %ls", LogText(identifier).c_str());
    Dispatch(*this, kNotifyRules, identifier);
}

void BrowsingProtectionHandler::OpenChromeWebStore()
{
    const FunctionLog log(L"BrowsingProtectionHandler::OpenChromeWebStore");
    LOG(log, 5, L"%s: Opening Chrome web store");
    QDesktopServices::openUrl(QUrl(QString::fromLatin1(Addresses::kChromeWebStore), QUrl::TolerantMode));
}
