#include "handlers/WebsiteListHandler.h"

#include "handlers/ElevatedSettings.h"
#include "handlers/MainGuiHandler.h"
#include "handlers/SharedVariables.h"
#include "logging/FunctionLog.h"
#include "url/UrlUtil.h"

#include <QStringList>

using StrataSettings::SetResult;

using namespace SharedVariables;

namespace
{

const VariableIdentifier kEnableTabList("@ContentControl\\WebsiteRestrictions:enable_tab_list");
const VariableIdentifier kReadOnlyTable("@ContentControl\\WebsiteRestrictions:readonly_table");
const VariableIdentifier kDeniedWebsites("@ContentControl\\WebsiteRestrictions:denied_websites");
const VariableIdentifier kAllowedActionItem("@ContentControl\\WebsiteRestrictions:allowed_action_item");
const VariableIdentifier kDeniedActionItem("@ContentControl\\WebsiteRestrictions:denied_action_item");
const VariableIdentifier kClearDeniedList("@ContentControl\\Triggers:clear_denied_list");
const VariableIdentifier kAdminEntry("@Veridan\\Websites\\Strings:admin_entry");

} // namespace

/// What every row of a table is made with, shared by all of them.
struct WebsiteListHandler::RowStrings
{
    explicit RowStrings(QString administrator) : adminEntry(std::move(administrator)) {}

    const QString column = UiString("0");
    const QString readOnly = UiString("readonly");
    const QString tooltip = UiString("tooltip");
    const QString adminEntry; // "URL (admin entry)" is an administrator's tooltip
};

const NotifyRule WebsiteListHandler::kNotifyRules[] = {
    {kShowWebsiteList, &WebsiteListHandler::OnShowWebsiteList},
    {kAllowedActionItem, &WebsiteListHandler::HandleAllowedActionItem},
    {kClearAllowedList, &WebsiteListHandler::ClearAllowed},
    {kCloseWebsiteList, &WebsiteListHandler::OnCloseWebsiteList},
    {kLoadData, &WebsiteListHandler::OnLoadData},
};

/// Subscribed only while the denied tab is enabled.
const NotifyRule WebsiteListHandler::kDeniedRules[] = {
    {kDeniedActionItem, &WebsiteListHandler::HandleDeniedActionItem},
    {kClearDeniedList, &WebsiteListHandler::ClearDenied},
};

WebsiteListHandler::WebsiteListHandler(const std::shared_ptr<SystemSettings>& systemSettings,
                                       const std::shared_ptr<UserSettings>& userSettings,
                                       const std::shared_ptr<MainGuiHandler>& mainGui)
    : Handler(L"WebsiteListHandler::OnNotify"), m_systemSettings(systemSettings), m_userSettings(userSettings),
      m_mainGui(mainGui)
{
    const EntryLog log(L"WebsiteListHandler::WebsiteListHandler");
}

WebsiteListHandler::~WebsiteListHandler()
{
    const EntryLog log(L"WebsiteListHandler::~WebsiteListHandler");
}

bool WebsiteListHandler::Initialize(IPlugInManager* manager)
{
    const EntryLog log(L"WebsiteListHandler::Initialize");
    if (!m_variables.Obtain(log, manager))
        return false;
    m_variables.RegisterKept({kEnableTabList, kReadOnlyTable});
    m_variables.Register({kAllowedWebsites, kDeniedWebsites});
    Follow(kNotifyRules);
    m_variables.Set(kReadOnlyTable, m_readOnly);

    const auto user = m_userSettings.lock();
    const bool deniedEnabled = user && user->Settings().internal.sites.enabled.Get();
    if (deniedEnabled)
        Follow(kDeniedRules);
    m_variables.Set(kEnableTabList, QStringList{UiString("true"), UiString(deniedEnabled ? "true" : "false")});
    FollowSettings();
    return true;
}

void WebsiteListHandler::FollowSettings()
{
    const auto follow = [this](auto& controller) {
        Follow(controller, controller.Settings().internal.sites.list, [this](const std::wstring& key) { Load(key); });
    };
    if (const auto user = m_userSettings.lock())
        follow(*user);
    if (const auto system = m_systemSettings.lock())
        follow(*system);
}

void WebsiteListHandler::Load(const std::wstring&)
{
    const EntryLog log(L"WebsiteListHandler::Load");
    const auto user = m_userSettings.lock();
    const auto system = m_systemSettings.lock();
    if (!user || !system)
        return;
    m_variables.Set(kReadOnlyTable, m_readOnly);
    const Sites own = user->Settings().internal.sites.list.Get();
    const Sites administrator = system->Settings().internal.sites.list.Get();
    m_variables.Set(kAllowedWebsites, ConvertWebFilterList(own, administrator, true));
    m_variables.Set(kDeniedWebsites, ConvertWebFilterList(own, administrator, false));
}

QVariantList WebsiteListHandler::ConvertWebFilterList(const Sites& own, const Sites& administrator, bool allowed) const
{
    const EntryLog log(L"WebsiteListHandler::ConvertWebFilterList");
    const RowStrings texts(m_variables.Get(kAdminEntry).toString());
    QVariantList rows;
    for (const Settings::Site& site : own)
        if (site.allowed == allowed)
            rows.append(ParseItemIntoMap(QString::fromStdString(site.Url), false, texts));
    for (const Settings::Site& site : administrator)
    {
        if (site.allowed != allowed)
            continue;
        const auto same = own.find(site);
        if (same == own.end() || same->allowed != allowed)
            rows.append(ParseItemIntoMap(QString::fromStdString(site.Url), true, texts));
    }
    return rows;
}

QVariantMap WebsiteListHandler::ParseItemIntoMap(const QString& url, bool adminEntry, const RowStrings& texts)
{
    const FunctionLog log(L"WebsiteListHandler::ParseItemIntoMap");
    LOG(log, 5, L"%s: Adding %ls into map with column index", url.toStdWString().c_str());
    QVariantMap row{{texts.column, url}, {texts.readOnly, adminEntry}};
    if (adminEntry)
        row.insert(texts.tooltip, UiString("%1 (%2)").arg(url, texts.adminEntry));
    return row;
}

void WebsiteListHandler::OnShowWebsiteList()
{
    m_pageOpen = true;
    Load({});
}

void WebsiteListHandler::OnCloseWebsiteList()
{
    m_pageOpen = false;
}

/// The web filtering page, which is notified first, has shown its own list in the table of allowed websites.
void WebsiteListHandler::OnLoadData()
{
    if (m_pageOpen)
        Load({});
}

void WebsiteListHandler::RefreshAllowedWebsitesList()
{
    const EntryLog log(L"WebsiteListHandler::RefreshAllowedWebsitesList");
    Load({});
}

void WebsiteListHandler::setReadOnly(bool readOnly)
{
    m_readOnly = readOnly;
    if (m_variables)
        m_variables.Set(kReadOnlyTable, m_readOnly);
}

void WebsiteListHandler::ClearAllowed()
{
    Clear(kAllowedWebsites, true);
}

void WebsiteListHandler::ClearDenied()
{
    Clear(kDeniedWebsites, false);
}

void WebsiteListHandler::Clear(const VariableIdentifier& table, bool allowed)
{
    m_variables.Set(table, QVariantList());
    if (!RemoveAll(allowed))
        Load({}); // the store will tell of nothing: show what holds
}

bool WebsiteListHandler::RemoveAll(bool allowed)
{
    const auto elevated = GetSaveController();
    if (!elevated)
        return false;
    const auto result = elevated->WritableSettings().internal.sites.list.ChangeStored([allowed](Sites& sites) {
        const std::size_t before = sites.size();
        for (auto site = sites.begin(); site != sites.end();)
            site = site->allowed == allowed ? sites.erase(site) : std::next(site);
        return sites.size() != before;
    });
    return elevated->Save() && result == SetResult::Stored;
}

void WebsiteListHandler::HandleAllowedActionItem()
{
    HandleActionItem(FunctionLog(L"WebsiteListHandler::HandleAllowedActionItem"), kAllowedActionItem, true);
}

void WebsiteListHandler::HandleDeniedActionItem()
{
    HandleActionItem(FunctionLog(L"WebsiteListHandler::HandleDeniedActionItem"), kDeniedActionItem, false);
}

void WebsiteListHandler::HandleActionItem(const FunctionLog& log, const VariableIdentifier& item, bool allowed)
{
    LOG(log, 5, L"%s: ");
    const QVariantMap action = m_variables.Get(item).toMap();
    if (action.isEmpty())
    {
        LOG(log, 5, L"%s: Action item empty");
        return;
    }
    if (const auto added = action.find(UiString("new")); added != action.end())
        AddNewItem(added->toString(), allowed);
    else if (const auto edited = action.find(UiString("edit")); edited != action.end())
        EditOldItem(*edited, allowed);
    else if (const auto removed = action.find(UiString("remove")); removed != action.end())
        RemoveItem(removed->toString());
    else if (allowed)
        LOG(log, 2, L"%s: Unsupported allowed action");
    else
        LOG(log, 2, L"%s: Unsupported denied action");
    m_variables.Set(item, QVariant()); // the same edit can be sent again
}

void WebsiteListHandler::AddNewItem(const QString& url, bool allowed)
{
    if (const std::string address = NewAddress(url); !address.empty())
        Add(address, allowed);
}

std::string WebsiteListHandler::NewAddress(const QString& url)
{
    const FunctionLog log(L"WebsiteListHandler::AddNewItem");
    const QString text = url.trimmed();
    std::string address = text.isEmpty() ? std::string() : UrlUtil::GetPunycodeUrl(text.toStdWString());
    if (address.empty())
        LOG(log, 2, L"%s: New item empty");
    else if (!Settings::Site::IsAddress(address))
    {
        LOG(log, 2, L"%s: New item is no address");
        address.clear();
    }
    return address;
}

void WebsiteListHandler::Add(const std::string& address, bool allowed)
{
    const FunctionLog log(L"WebsiteListHandler::AddNewItem");
    LOG(log, 5, L"%s: Adding url, punycoded format: %hs", address.c_str());
    const auto elevated = GetSaveController();
    if (!elevated)
        return;
    elevated->WritableSettings().internal.sites.Add(Settings::Site(address, allowed, std::string()));
    elevated->Save();
}

/// Removing and adding are one change of the list: it is saved once, so that no failure comes between, and not begun
/// without something to add.
void WebsiteListHandler::EditOldItem(const QVariant& edit, bool allowed)
{
    const EntryLog log(L"WebsiteListHandler::EditOldItem");
    if (!GetSaveController())
        return;
    const QVariantMap change = edit.toMap();
    const QString original = change.value(UiString("old")).toString();
    if (original.isEmpty())
    {
        LOG(log, 2, L"%s: Edited item's original is empty");
        return;
    }
    const std::string address = NewAddress(change.value(UiString("new")).toString());
    if (address.empty())
        return;
    Remove(original);
    Add(address, allowed);
}

void WebsiteListHandler::RemoveItem(const QString& url)
{
    if (const auto elevated = Remove(url))
        elevated->Save();
}

std::shared_ptr<ElevatedSettings> WebsiteListHandler::Remove(const QString& url) const
{
    const FunctionLog log(L"WebsiteListHandler::RemoveItem");
    LOG(log, 5, L"%s: %ls", url.toStdWString().c_str());
    const auto elevated = GetSaveController();
    if (!elevated)
        return nullptr;
    if (url.isEmpty())
    {
        LOG(log, 2, L"%s: New item empty");
        return nullptr;
    }
    elevated->WritableSettings().internal.sites.Remove(url.toStdString());
    return elevated;
}

std::shared_ptr<ElevatedSettings> WebsiteListHandler::GetSaveController() const
{
    return FindElevatedSettings(FunctionLog(L"WebsiteListHandler::GetSaveController"), m_mainGui, L"initialized");
}
