#include "handlers/WebFilteringHandler.h"

#include "handlers/ElevatedSettings.h"
#include "handlers/SharedVariables.h"
#include "logging/FunctionLog.h"

#include <QDesktopServices>
#include <QUrl>

using namespace SharedVariables;

namespace
{

constexpr const char* kAllowFragfinn = "@ContentControl\\Data:allow_fragfinn_website_state";
const VariableIdentifier kCategories("@ContentControl\\Data:current_user_categories");
const VariableIdentifier kCategoriesConfigured("@ContentControl\\Data:current_user_categories_configured");
const VariableIdentifier kWizardPage("@ContentControl\\WebPageFilterWizard:wpf_wizard_content_index");
const VariableIdentifier kCategoriesFilter("@ContentControl\\Data:categories_filter");
const VariableIdentifier kTeenMode("@ContentControl\\Triggers:web_page_filter_teenmode");
const VariableIdentifier kChildMode("@ContentControl\\Triggers:web_page_filter_childmode");
const VariableIdentifier kShowFragfinnSites("@ContentControl\\Triggers:show_fragfinn_sites");

constexpr auto kFragfinn = &VdnSettings::fragfinn;

constexpr ShownVariable kFilterOptions[] = {
    {kAllowFragfinn, Value<kFragfinn, &Settings::Fragfinn::enabled>},
    {"@ContentControl\\Data:enable_checkbox_fragfinn_element", Value<kFragfinn, &Settings::Fragfinn::activated>},
    {"@ContentControl\\Data:enable_label_fragfinn_element", Value<kFragfinn, &Settings::Fragfinn::activated>},
};

constexpr int kChildModePage = 1;
constexpr int kTeenModePage = 0;

QString CategoriesEntry()
{
    return UiString("Categories");
}

QString KeyOf(const Settings::Category& category)
{
    return QString::fromWCharArray(category.name.key);
}

/// The entry of the group that the category is a member of, for a member without an entry of its own.
QVariant GroupEntry(const Settings::Category& category, const QVariantMap& entries)
{
    switch (category.name.group)
    {
    case Settings::Disturbing:
        return entries.value(UiString("disturbing"));
    case Settings::Shopping:
        return entries.value(UiString("shopping"));
    default:
        return {};
    }
}

} // namespace

const NotifyRule WebFilteringHandler::kNotifyRules[] = {
    {kTeenMode, &WebFilteringHandler::OnTeenMode},
    {kChildMode, &WebFilteringHandler::OnChildMode},
    NotifyRule(kClearAllowedList),
    {kShowFragfinnSites, &WebFilteringHandler::OnShowFragfinn},
    {kLoadData, &WebFilteringHandler::Load},
    {kSave, &WebFilteringHandler::Save},
};

WebFilteringHandler::WebFilteringHandler(const std::shared_ptr<SystemSettings>& systemSettings,
                                         const std::shared_ptr<UserSettings>& userSettings)
    : Handler(L"WebFilteringHandler::OnNotify"), m_systemSettings(systemSettings), m_userSettings(userSettings)
{
    const EntryLog log(L"WebFilteringHandler::WebFilteringHandler");
}

WebFilteringHandler::~WebFilteringHandler()
{
    const EntryLog log(L"WebFilteringHandler::~WebFilteringHandler");
}

bool WebFilteringHandler::Initialize(IPlugInManager* manager, const std::shared_ptr<MainGuiHandler>& mainGui)
{
    const EntryLog log(L"WebFilteringHandler::Initialize");
    m_mainGui = mainGui;
    if (!m_variables.Obtain(log, manager))
        return false;
    m_variables.Register(kFilterOptions);
    m_variables.Register({kCategories, kCategoriesConfigured, kAllowedWebsites, kWizardPage, kCategoriesFilter});
    Follow(kNotifyRules);
    return true;
}

void WebFilteringHandler::Load()
{
    const EntryLog log(L"WebFilteringHandler::Load");
    const auto system = m_systemSettings.lock();
    const auto user = m_userSettings.lock();
    if (!system || !user || !m_variables)
        return;

    const VdnSettings& settings = user->Settings();
    m_variables.Show(kFilterOptions, settings);
    m_variables.Set(kCategories, LoadCategoriesFromStrata(settings.categories));
    m_variables.Set(kAllowedWebsites, ConvertList(settings.internal.sites.list.Get()));
    const bool childMode = settings.webFiltering.childMode.Get();
    m_variables.Set(kWizardPage, childMode ? kChildModePage : kTeenModePage);
    m_variables.Set(kCategoriesFilter, !childMode);
}

QVariantMap WebFilteringHandler::LoadCategoriesFromStrata(const Settings::Categories& categories)
{
    const EntryLog log(L"WebFilteringHandler::LoadCategoriesFromStrata");
    QVariantMap entries;
    bool configured = false;
    for (const Settings::Category& category : categories.categories)
    {
        const QString key = KeyOf(category);
        const bool allowed = category.allowed.Get();
        LOG(log, 5, L"%s: %S = %d", key.toStdString().c_str(), allowed ? 1 : 0);
        entries.insert(key, allowed);
        configured |= !allowed;
    }
    m_variables.Set(kCategoriesConfigured, configured);
    return {{CategoriesEntry(), entries}};
}

QVariantList WebFilteringHandler::ConvertList(const std::set<Settings::Site>& sites)
{
    const EntryLog log(L"WebFilteringHandler::ConvertList");
    const QString column = UiString("0");
    QVariantList rows;
    for (const Settings::Site& site : sites)
    {
        if (!site.allowed)
            continue;
        LOG(log, 5, L"%s: Adding %hs into map with column index", site.Url.c_str());
        rows.append(QVariantMap{{column, QString::fromStdString(site.Url)}});
    }
    return rows;
}

void WebFilteringHandler::Save()
{
    const EntryLog log(L"WebFilteringHandler::Save");
    const auto elevated = FindElevatedSettings(log, m_mainGui, L"initalized");
    if (!elevated)
        return;

    const QVariant categoriesFilter = m_variables.Get(kCategoriesFilter);
    if (!categoriesFilter.isValid())
    {
        LOG(log, 3, L"%s: categories_filter is not set"); // nothing is shown yet that could be saved
        return;
    }
    VdnSettings& settings = elevated->WritableSettings();
    const auto user = m_userSettings.lock();
    const VdnSettings& shown = user ? user->Settings() : settings;
    const auto take = [](StrataSettings::Property<bool>& property, const StrataSettings::Property<bool>& shownProperty,
                         bool value) {
        if (IsChosen(shownProperty, value))
            property.Set(value);
    };
    const bool categoryMode = categoriesFilter.toBool();
    take(settings.webFiltering.childMode, shown.webFiltering.childMode, !categoryMode);
    if (categoryMode)
        SetCategoriesToStrata(settings.categories, m_variables.Get(kCategories).toMap(), &shown.categories);
    else
        take(settings.fragfinn.enabled, shown.fragfinn.enabled, m_variables.Get(kAllowFragfinn).toBool());
    elevated->Save();
}

void WebFilteringHandler::SetCategoriesToStrata(Settings::Categories& categories, const QVariantMap& map,
                                                const Settings::Categories* shown)
{
    const EntryLog log(L"WebFilteringHandler::SetCategoriesToStrata");
    if (!map.contains(CategoriesEntry()))
    {
        LOG(log, 3, L"%s: categories key not found");
        return;
    }
    const QVariantMap entries = map.value(CategoriesEntry()).toMap();
    for (std::size_t i = 0; i < categories.categories.size(); ++i)
    {
        Settings::Category& category = categories.categories[i];
        const QString key = KeyOf(category);
        const QVariant entry = entries.contains(key) ? entries.value(key) : GroupEntry(category, entries);
        if (!entry.canConvert<bool>() || (shown && !IsChosen(shown->categories[i].allowed, entry.toBool())))
            continue;
        LOG(log, 5, L"%s: %S = %d (isAllowed=%d)", key.toStdString().c_str(), entry.toBool() ? 1 : 0,
            category.allowed.Get() ? 1 : 0);
        category.allowed.Set(entry.toBool());
    }
}

void WebFilteringHandler::OnChildMode()
{
    m_variables.Set(kWizardPage, kChildModePage);
}

void WebFilteringHandler::OnTeenMode()
{
    m_variables.Set(kWizardPage, kTeenModePage);
}

void WebFilteringHandler::OnShowFragfinn()
{
    const auto user = m_userSettings.lock();
    if (!user)
        return;
    const std::string address = user->Settings().fragfinn.url.Get();
    const QUrl url = QUrl::fromUserInput(QString::fromStdString(address));
    if (url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https"))
        QDesktopServices::openUrl(url);
    else // the desktop would start a program that is named
        LOG(FunctionLog(L"WebFilteringHandler::OnShowFragfinn"), 2, L"%s: Not a web page: %hs", address.c_str());
}
