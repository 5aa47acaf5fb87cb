#include "tests/scenarios/HostProcess.h"
#include "tests/scenarios/Strata.h"

#include <gmock/gmock.h>

namespace
{

constexpr const char* kTimeLimit = "@TimeLimit\\Data:time_limit_state";
constexpr const char* kTimeLimitStatus = "@TimeLimit\\Data:time_limit_status";
constexpr const char* kWebFilter = "@ContentControl\\Data:current_user_web_page_filter_switch_state";
constexpr const char* kSubStatus = "@ContentControl\\Status:sub_status";
constexpr const char* kRequestSettings = "@Veridan\\Settings\\Triggers:request_show_settings_ui";
constexpr const char* kSettingsClosed = "@Veridan\\Settings\\Triggers:settings_ui_closed";

/// The history's entries of one variable since a sequence number, as "by value".
QStringList History(HostProcess& host, const char* name, qlonglong since)
{
    QStringList entries;
    for (const QVariant& row : host.Do("history", {{"name", name}, {"since", since}}).toList())
    {
        const QVariantMap entry = row.toMap();
        entries.append(entry["by"].toString() + " " + entry["value"].toString());
    }
    return entries;
}

qlonglong LastSequence(HostProcess& host)
{
    const QVariantList history = host.Do("history").toList();
    return history.isEmpty() ? 0 : history.last().toMap()["seq"].toLongLong();
}

TEST(MainPageScenario, ASwitchMovedOnThePageLandsInTheStore)
{
    HostProcess host;
    host.Load();
    host.Trigger(kRequestSettings);
    const qlonglong before = LastSequence(host);
    host.Set(kTimeLimit, "MoveOn");
    host.Do("settle");
    EXPECT_EQ((QStringList{"page MoveOn", "plugin On"}), History(host, kTimeLimit, before).mid(0, 2));
    EXPECT_EQ("On", host.Get(kTimeLimitStatus).toString());
    EXPECT_EQ("WfOn", host.Get(kSubStatus).toString());
    const Strata strata(host.DataFolder());
    EXPECT_EQ("true", strata.Run({"get", "common.time.enabled"}));
    EXPECT_EQ("true", strata.Run({"get", "common.time.quota.enabled"}));
    host.Trigger(kSettingsClosed);
    EXPECT_EQ(0, host.Finish());
}

TEST(MainPageScenario, AnotherProgramsChangeAppearsOnThePage)
{
    HostProcess host;
    host.Load();
    host.Do("watch", {{"prefix", kTimeLimitStatus}});
    Strata(host.DataFolder()).Set("common.time.enabled", "true", {"--type", "bool"});
    const QVariantMap event = host.AwaitEvent([](const QVariantMap& row) { return row["value"] == "On"; });
    EXPECT_EQ(kTimeLimitStatus, event["name"].toString());
    host.Do("settle");
    EXPECT_EQ("WfOn", host.Get(kSubStatus).toString());
}

TEST(MainPageScenario, ADecisionOfThePolicyShowsAtOnceAndHolds)
{
    HostProcess host;
    host.StoreSet("user", "common.content.enabled", "bool", false);
    host.StoreSet("system", "windows.browsing_protection.enabled", "bool", false);
    host.Load();
    EXPECT_EQ("Error", host.Get("@ContentControl\\Status:status_level").toString());
    host.Do("store.constrain",
            {{"scope", "system"}, {"key", "windows.browsing_protection.enabled"}, {"constraints", 1}});
    host.Do("store.constrain", {{"scope", "user"}, {"key", "common.content.enabled"}, {"constraints", 1}});
    host.Do("settle");
    EXPECT_EQ(true, host.Get("@BrowsingProtection\\Data:browsing_protection_state_readonly"));
    host.Trigger(kRequestSettings);
    host.Set(kWebFilter, "MoveOn");
    host.Do("settle");
    EXPECT_EQ("Off", host.Get(kWebFilter).toString());
    EXPECT_FALSE(host.StoreGet("user", "common.content.enabled")["value"].toBool());
}

TEST(MainPageScenario, EveryAcknowledgedChangeSurvivesTheHostsKill)
{
    QTemporaryDir folder;
    for (int round = 0; round < 5; ++round)
    {
        const QString url = QStringLiteral("site%1.example").arg(round);
        HostProcess host({folder.path(), {}, true});
        host.Load();
        host.Set("@ContentControl\\Triggers:save_allowed_url", url);
        host.Kill();
        EXPECT_THAT(Strata(folder.path()).Run({"get", "windows.browsing_protection.internal.sites.list"}).toStdString(),
                    testing::HasSubstr(url.toStdString()));
    }
}

TEST(MainPageScenario, WhatWaitsToBeSavedIsSavedWhenThePlugInIsUnloaded)
{
    HostProcess host;
    host.Load();
    host.Set("@Veridan\\MainGUI:visible", true);
    EXPECT_EQ(0, host.Do("unload").toMap()["peersOutstanding"].toInt());
    EXPECT_TRUE(host.StoreGet("user", "windows.browsing_protection.internal.main_gui_open")["value"].toBool());
}

} // namespace
