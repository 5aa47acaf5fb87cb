// What pages send to the handlers. Each line is a JSON object that gives variables their values: action items of the
// website tables, a URL to allow, the map of categories, and the week of the time limit.

#include "bench/support/PageHost.h"
#include "fuzz/MemoryStore.h"
#include "fuzz/Target.h"
#include "handlers/MainGuiHandler.h"
#include "handlers/TimeLimitHandler.h"
#include "handlers/WebFilteringHandler.h"
#include "handlers/WebsiteListHandler.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace
{

const VariableIdentifier kAllowedItem("@ContentControl\\WebsiteRestrictions:allowed_action_item");
const VariableIdentifier kDeniedItem("@ContentControl\\WebsiteRestrictions:denied_action_item");
const VariableIdentifier kAdminEntry("@Veridan\\Websites\\Strings:admin_entry");
const VariableIdentifier kCategories("@ContentControl\\Data:current_user_categories");
const VariableIdentifier kCategoriesFilter("@ContentControl\\Data:categories_filter");
const VariableIdentifier kTimeSlots("@TimeLimit\\Data:time_slots");
const VariableIdentifier kHours("@TimeLimit\\Data:weekday_hours_value");

using Sites = std::set<Settings::Site>;

/// The pages of a user who has just agreed to elevation, over an empty store.
class Pages
{
public:
    Pages()
    {
        MemoryStore::Get().Clear();
        m_host.Put(kCategoriesFilter, true);
        m_mainGui->Initialize(&m_host);
        m_websites.Initialize(&m_host);
        m_webFiltering.Initialize(&m_host, m_mainGui);
        m_timeLimit.Initialize(&m_host);
        Require(m_mainGui->ShowUAC(true), "a store that can be opened gives elevated settings");
    }

    void Send(const QVariantMap& values)
    {
        m_host.Put(kAdminEntry, values.value(QStringLiteral("admin_entry")));
        if (values.contains(QStringLiteral("allowed")))
            SendItem(kAllowedItem, values.value(QStringLiteral("allowed")),
                     &WebsiteListHandler::HandleAllowedActionItem);
        if (values.contains(QStringLiteral("denied")))
            SendItem(kDeniedItem, values.value(QStringLiteral("denied")), &WebsiteListHandler::HandleDeniedActionItem);
        if (values.contains(QStringLiteral("url")))
            m_mainGui->SaveAllowedUrl(values.value(QStringLiteral("url")).toString());
        if (values.contains(QStringLiteral("categories")))
            SendCategories(values.value(QStringLiteral("categories")));
        if (values.contains(QStringLiteral("time_slots")))
            SendWeek(values.value(QStringLiteral("time_slots")), values.value(QStringLiteral("hours")));
    }

    void RequireWebsitesSaved()
    {
        const auto& list = Settings().internal.sites.list;
        const Sites held = list.Get();
        Require(held.count(Settings::Site::Key({})) == 0, "no address is empty");
        StrataSettings::PropertySet<Settings::Site> saved(nullptr, list.GetKey());
        saved.Load(MemoryStore::Get().Handle());
        Require(saved.WasReadWhole() && saved.Get() == held, "what a page sent is saved as it is held");
    }

    void RequireWebsitesShown()
    {
        const Sites held = Settings().internal.sites.list.Get();
        for (const bool asAdministrator : {false, true})
        {
            const Sites none;
            const auto rows = [&](bool allowed) {
                return asAdministrator ? m_websites.ConvertWebFilterList(none, held, allowed)
                                       : m_websites.ConvertWebFilterList(held, none, allowed);
            };
            const QVariantList shown = rows(true) + rows(false);
            Require(shown.size() == static_cast<int>(held.size()), "each website has one row");
            for (const QVariant& row : shown)
                RequireRow(row.toMap(), asAdministrator);
        }
    }

private:
    VdnSettings& Settings() { return m_mainGui->Elevated()->WritableSettings(); }

    /// The handler follows the list of denied addresses only for a user who may have one.
    void SendItem(const VariableIdentifier& id, const QVariant& item, void (WebsiteListHandler::*handle)())
    {
        m_host.Put(id, item);
        (m_websites.*handle)();
        Require(m_host.Value(id).toMap().isEmpty(), "the same edit can be sent again");
    }

    void SendCategories(const QVariant& map)
    {
        m_host.Put(kCategories, map);
        m_webFiltering.Save();
        Settings::Categories& categories = Settings().categories;
        const QVariantMap shown = m_webFiltering.LoadCategoriesFromStrata(categories);
        WebFilteringHandler::SetCategoriesToStrata(categories, shown);
        Require(m_webFiltering.LoadCategoriesFromStrata(categories) == shown,
                "a page that is not touched changes nothing");
    }

    void SendWeek(const QVariant& timeSlots, const QVariant& hours)
    {
        m_host.Put(kTimeSlots, timeSlots);
        m_host.Put(kHours, hours);
        m_timeLimit.Save();
    }

    void RequireRow(const QVariantMap& row, bool asAdministrator)
    {
        const QString url = row.value(QStringLiteral("0")).toString();
        const QString tooltip = url + QLatin1String(" (") + m_host.Value(kAdminEntry).toString() + QLatin1Char(')');
        Require(row.value(QStringLiteral("tooltip")).toString() == (asAdministrator ? tooltip : QString()),
                "a tooltip shows its texts as they are");
    }

    PageHost m_host;
    std::shared_ptr<MainGuiHandler> m_mainGui = std::make_shared<MainGuiHandler>(nullptr, nullptr);
    WebsiteListHandler m_websites{nullptr, nullptr, m_mainGui};
    WebFilteringHandler m_webFiltering{nullptr, nullptr};
    TimeLimitHandler m_timeLimit{nullptr, m_mainGui};
};

const Target kTarget("page_actions", [](std::string_view input) {
    Pages pages;
    for (const QByteArray& line : QByteArray::fromRawData(input.data(), static_cast<int>(input.size())).split('\n'))
    {
        pages.Send(QJsonDocument::fromJson(line).object().toVariantMap());
        pages.RequireWebsitesSaved();
        pages.RequireWebsitesShown();
    }
});

} // namespace
