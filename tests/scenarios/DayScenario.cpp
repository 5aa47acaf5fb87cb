#include "tests/scenarios/HostProcess.h"
#include "tests/scenarios/Strata.h"

#include <gmock/gmock.h>

#include <QDate>
#include <QSet>

namespace
{

constexpr const char* kInternal = "windows.browsing_protection.internal.";

/// One day of a family's computer, from the plug-in's start to its end, in one host.
class DayScenario : public testing::Test
{
protected:
    DayScenario()
    {
        // Every setting has a value, so that what the day writes is what was changed.
        const Strata strata(m_host.DataFolder());
        strata.Run({"seed"});
        m_host.StoreSet("user", Internal("statistics.daily_counters"), "object",
                        QVariantList{QVariantMap{{"julianDate", QDate::currentDate().toJulianDay()},
                                                 {"websitesChecked", 12},
                                                 {"bankingSessions", 1},
                                                 {"harmfulBlocks", 0},
                                                 {"wtsScans", 0},
                                                 {"wtsBlocks", 0}}});
        m_host.Load();
        m_host.Trigger("@SafeBanking\\Triggers:closeBankingSession"); // the page's echo of the initial state
    }

    static QString Internal(const char* key) { return QString(kInternal) + key; }

    void Settle() { m_host.Do("settle"); }
    void Fire(const char* trigger)
    {
        m_host.Trigger(trigger);
        Settle();
    }
    void ServiceSets(const char* scope, const QString& key, const char* type, const QVariant& value)
    {
        m_host.StoreSet(scope, key, type, value);
        Settle();
    }

    /// The keys that the plug-in wrote since the last call, but for those of the statistics: whenever elevated settings
    /// are loaded, these are constrained and written with the next save.
    QSet<QString> Written()
    {
        QSet<QString> keys;
        for (const QVariant& row : m_host.Do("store.writes", {{"since", m_lastWrite}}).toList())
        {
            const QVariantMap write = row.toMap();
            m_lastWrite = write["seq"].toLongLong();
            if (write["by"] == "plugin" && !write["key"].toString().contains(".internal.statistics."))
                keys.insert(write["key"].toString());
        }
        return keys;
    }

    /// Every value of both scopes, as "scope key", but for the statistics.
    QVariantMap Values()
    {
        QVariantMap values;
        for (const char* scope : {"user", "system"})
        {
            const QVariantMap entries = m_host.Do("store.list", {{"scope", scope}}).toMap();
            for (auto entry = entries.begin(); entry != entries.end(); ++entry)
                if (!entry.key().contains(".internal.statistics."))
                    values[QString(scope) + " " + entry.key()] = entry.value().toMap()["value"];
        }
        return values;
    }

    /// What is not as it was.
    static QVariantMap Changes(const QVariantMap& before, const QVariantMap& after)
    {
        QVariantMap changes;
        for (auto value = after.begin(); value != after.end(); ++value)
            if (!before.contains(value.key()) || before[value.key()] != value.value())
                changes[value.key()] = value.value();
        for (auto value = before.begin(); value != before.end(); ++value)
            if (!after.contains(value.key()))
                changes[value.key()] = "removed";
        return changes;
    }

    int Triggers(const QString& name)
    {
        return m_host.Do("variables", {{"prefix", name}}).toMap()[name].toMap()["triggers"].toInt();
    }

    HostProcess m_host;
    qlonglong m_lastWrite = 0;
};

TEST_F(DayScenario, FromStartToShutdown)
{
    const QVariantMap before = Values();

    // Morning: a parent edits every page, with the right to do so.
    Fire("@Triggers\\Windows:show_main_window");
    Fire("@Veridan\\Settings\\Triggers:request_show_settings_ui");
    Written();
    m_host.Set("@SafeSearch\\Data:safe_search_state", "MoveOn");
    m_host.Set("@ContentControl\\Data:current_user_web_page_filter_switch_state", "MoveOn");
    Settle();
    EXPECT_EQ((QSet<QString>{"windows.browsing_protection.search_result_filter.enabled", "common.content.enabled"}),
              Written());
    EXPECT_EQ("WfOn", m_host.Get("@ContentControl\\Status:sub_status"));

    QVariantMap categories = m_host.Get("@ContentControl\\Data:current_user_categories").toMap();
    QVariantMap allowed = categories["Categories"].toMap();
    allowed["gambling"] = false;
    m_host.Set("@ContentControl\\Data:current_user_categories", QVariantMap{{"Categories", allowed}});
    m_host.Set("@ContentControl\\Data:categories_filter", true);
    QString week(168, '1');
    week.replace(22, 2, "00");
    m_host.Set("@TimeLimit\\Data:time_slots", week);
    m_host.Set("@TimeLimit\\Data:weekday_hours_value", 2);
    Fire("@Veridan\\Settings\\Triggers:save");
    QSet<QString> expected = {"common.content.allowed_categories.gambling", "common.time.curfew.monday.ranges",
                              "windows.browsing_protection.web_content_control.child_mode"};
    for (const char* day : {"sunday", "monday", "tuesday", "wednesday", "thursday", "friday", "saturday"})
        expected.insert(QStringLiteral("common.time.quota.%1.duration").arg(day));
    EXPECT_EQ(expected, Written());
    EXPECT_EQ(2, m_host.Get("@TimeLimit\\Data:weekday_hours").toInt());
    Fire("@VDNSettings:save");
    EXPECT_EQ(0, m_host.Get("@VDNSettings:saveResult").toInt());

    // A policy locks a page that is open: the other values on it are saved, this one is not.
    m_host.Do("store.constrain", {{"scope", "user"}, {"key", "common.time.quota.monday.duration"}, {"constraints", 1}});
    Settle();
    m_host.Set("@TimeLimit\\Data:weekday_hours_value", 3);
    Fire("@Veridan\\Settings\\Triggers:save");
    EXPECT_FALSE(Written().contains("common.time.quota.monday.duration"));
    EXPECT_EQ(7200, m_host.StoreGet("user", "common.time.quota.monday.duration")["value"].toInt());
    EXPECT_EQ(10800, m_host.StoreGet("user", "common.time.quota.tuesday.duration")["value"].toInt());
    Fire("@Veridan\\Settings\\Triggers:settings_ui_closed");

    Fire("@ContentControl\\Triggers:request_show_website_list");
    m_host.Set("@ContentControl\\WebsiteRestrictions:denied_action_item",
               QVariantMap{{"new", QString::fromUtf8("b\xC3\xBC"
                                                     "cher.example")}});
    Settle();
    EXPECT_EQ(1, m_host.Get("@ContentControl\\WebsiteRestrictions:denied_websites").toList().size());
    Fire("@ContentControl\\Triggers:close_website_list");
    Fire("@BrowserExtensions\\Triggers:reinstall");
    EXPECT_EQ(1, m_host.StoreGet("user", Internal("reinstall_extensions"))["value"].toInt());

    // Noon: a banking session, closed from the flyer.
    m_host.Do("event.create", {{"name", "Veridan.BankingClose"}});
    m_host.Do("clipboard.set", {{"text", "IBAN"}});
    m_host.Set("@Product\\Customization:ClearClipboardAfterBanking", true);
    ServiceSets("system", Internal("banking_close_event"), "string", "Veridan.BankingClose");
    ServiceSets("system", Internal("banking_session_open"), "bool", true);
    EXPECT_EQ(1, Triggers("@SafeBanking\\Triggers:flyerOpen"));
    Fire("@SafeBanking\\Triggers:closeBankingSession");
    EXPECT_TRUE(m_host.Do("event.state", {{"name", "Veridan.BankingClose"}}).toMap()["signalled"].toBool());
    ServiceSets("system", Internal("banking_session_open"), "bool", false);
    EXPECT_EQ("", m_host.Do("clipboard.get").toMap()["text"].toString());

    // Evening: the service, a process of its own, warns and locks; a parent extends from the flyer's button.
    const Strata service(m_host.DataFolder());
    const auto serviceTriggers = [&](const char* value) {
        service.Run({"set", "--", Internal("time_limit_trigger"), value});
        Settle();
    };
    m_host.Set("@Veridan\\TimeLock\\Strings:flyer_title", "%1 minutes left");
    serviceTriggers("5");
    const QVariantMap flyer = m_host.Do("flyers").toList().value(0).toMap();
    EXPECT_EQ("5 minutes left", flyer["title"].toString());
    EXPECT_EQ("shown", flyer["state"].toString());
    serviceTriggers("-1");
    EXPECT_EQ(1, Triggers("@Veridan\\TimeLock\\Triggers:show_block_dialog"));
    m_host.Do("flyer.press", {{"flyer", flyer["id"]}, {"button", 0}});
    EXPECT_EQ(1, Triggers("@Veridan\\TimeLock\\Triggers:show_extend_time_dialog"));
    m_host.Set("@Veridan\\TimeLock\\Data:time_extended_by_index", 2);
    Fire("@Veridan\\TimeLock\\Triggers:extend_time");
    EXPECT_EQ(30, m_host.StoreGet("system", Internal("time_limit_extension"))["value"].toInt());
    serviceTriggers("0");

    EXPECT_THAT(m_host.Get("@Veridan\\Statistics:json_7").toString().toStdString(),
                testing::HasSubstr("\"number\":12"));

    // Night.
    m_host.Set("@Veridan\\MainGUI:visible", false);
    EXPECT_EQ(0, m_host.Do("unload").toMap()["peersOutstanding"].toInt());
    const QVariantMap curfew{{"from", 22 * 3600}, {"until", 24 * 3600}};
    const QVariantMap site{{"allowed", false}, {"label", ""}, {"url", "xn--bcher-kva.example"}};
    QVariantMap expectedChanges = {
        {"user windows.browsing_protection.search_result_filter.enabled", true},
        {"user common.content.enabled", true},
        {"user common.content.allowed_categories.gambling", false},
        {"user windows.browsing_protection.web_content_control.child_mode", false},
        {"user common.time.curfew.monday.ranges", QVariantList{curfew}},
        {"user common.time.quota.monday.duration", 7200},
        {"user " + Internal("sites.list"), QVariantList{site}},
        {"user " + Internal("reinstall_extensions"), 1},
        {"user " + Internal("open_banking_flyer_expanded"), false},
        {"system " + Internal("banking_close_event"), "Veridan.BankingClose"},
        {"system " + Internal("time_limit_extension"), 30},
    };
    for (const char* day : {"sunday", "tuesday", "wednesday", "thursday", "friday", "saturday"})
        expectedChanges[QStringLiteral("user common.time.quota.%1.duration").arg(day)] = 10800;
    const QVariantMap changes = Changes(before, Values());
    EXPECT_EQ(expectedChanges.keys(), changes.keys());
    for (auto change = expectedChanges.begin(); change != expectedChanges.end(); ++change)
        EXPECT_EQ(change.value(), changes[change.key()]) << qUtf8Printable(change.key());
    const QStringList metrics = [this] {
        QStringList names;
        for (const QVariant& event : m_host.Do("metrics").toList())
            names.append(event.toMap()["name"].toString());
        return names;
    }();
    EXPECT_EQ((QStringList{"settings_gui_opened", "browser_extensions_reinstall_triggered",
                           "safe_banking_flyer_activated", "safe_banking_closed_from_flyer", "vdn_block"}),
              metrics);
    EXPECT_EQ(QVariantList(), m_host.Do("log", {{"lines", 1000}, {"level", 2}}).toList());
    EXPECT_EQ(0, m_host.Finish());
}

} // namespace
