// What a plug-in finds around it: the suite's libraries, the registry, the desktop, the log.

#include "tests/scenarios/HostProcess.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>

#include <limits>

namespace
{

constexpr const char* kSettingsUi = "@Veridan\\Settings\\Triggers:request_show_settings_ui";
constexpr const char* kSettingsUiClosed = "@Veridan\\Settings\\Triggers:settings_ui_closed";
constexpr const char* kTimeLimit = "@TimeLimit\\Data:time_limit_state";

QString UnrulyPlugIn()
{
    return QFileInfo(HostProcess::Program()).path() + QLatin1String("/unruly_plugin" VERIDAN_MODULE_SUFFIX);
}

TEST(SurroundingsScenario, InfoTellsOfThePlugInBeforeItIsLoaded)
{
    HostProcess host;
    QVariantMap info = host.Do("info").toMap();
    EXPECT_EQ(info.value("plugin"),
              (QVariantMap{{"iid", "com.norlane.Veridan.ContentControl"}, {"className", "ContentControl"}}));
    EXPECT_EQ(info.value("initialized"), false);
    EXPECT_EQ(info.value("systemSid"), "S-1-5-18");
    EXPECT_TRUE(info.value("userSid").toString().startsWith("S-1-"));
    EXPECT_EQ(info.value("platform"), host.Hello().value("platform"));
    EXPECT_EQ(QFileInfo(info.value("dataDir").toString()), QFileInfo(host.DataFolder()));
    host.Load();
    info = host.Do("info").toMap();
    EXPECT_EQ(info.value("initialized"), true);
    EXPECT_TRUE(QFile::exists(info.value("logFile").toString()));
}

TEST(SurroundingsScenario, PlugInLoadsAndUnloadsAgainAndAgainLeavingNothing)
{
    HostProcess host;
    for (int i = 0; i < 20; ++i)
    {
        host.Load();
        host.Fails("load");
        EXPECT_EQ(host.Get(kTimeLimit), "Off");
        EXPECT_EQ(host.Do("unload"), (QVariantMap{{"peersOutstanding", 0}})) << i;
        host.Fails("unload");
    }
    const QVariantMap variables = host.Do("variables").toMap();
    ASSERT_TRUE(variables.contains(kTimeLimit));
    for (const QVariant& variable : variables)
    {
        EXPECT_EQ(variable.toMap().value("subscribers"), 0);
        EXPECT_EQ(variable.toMap().value("registered"), false);
    }
}

TEST(SurroundingsScenario, MissingLibraryKeepsThePlugInFromStartingUntilTheNextLoad)
{
    HostProcess host;
    for (const char* library : {"strata", "metrics", "flyer"})
    {
        const QVariantMap outcome = host.Do("load", {{"missing", QVariantList{library}}}).toMap();
        EXPECT_EQ(outcome.value("loaded"), true);
        EXPECT_EQ(outcome.value("initialized"), false) << library;
        EXPECT_FALSE(outcome.value("error").toString().isEmpty());
        host.Do("unload");
    }
    EXPECT_EQ(host.Do("log", {{"level", 2}}).toList().size(), 3);
    host.Load();
}

TEST(SurroundingsScenario, PlugInThatIsNotThereIsAnErrorInTheAnswer)
{
    HostProcess host({{}, {"--library", "/nowhere/Veridan" VERIDAN_MODULE_SUFFIX}});
    const QVariantMap outcome = host.Do("load").toMap();
    EXPECT_EQ(outcome.value("loaded"), false);
    EXPECT_EQ(outcome.value("initialized"), false);
    EXPECT_TRUE(outcome.value("error").toString().contains("Veridan"));
    EXPECT_TRUE(host.Do("info").toMap().value("plugin").toMap().value("iid").toString().isEmpty());
}

TEST(SurroundingsScenario, PlugInsOddWaysAreShownAndCleanedUp)
{
    HostProcess host({{}, {"--library", UnrulyPlugIn()}});
    host.Load();
    EXPECT_EQ(host.Get("@Unruly:ready"), true);
    EXPECT_EQ(host.Get("@Unruly:list"), (QVariantList{"a", "b"}));
    const QVariantMap kept = host.Do("variables", {{"prefix", "@Unruly:kept"}}).toMap().value("@Unruly:kept").toMap();
    EXPECT_EQ(kept, (QVariantMap{{"value", std::numeric_limits<qlonglong>::min()},
                                 {"type", "qlonglong"},
                                 {"registered", true},
                                 {"owner", "UnrulyPlugIn"},
                                 {"kept", true},
                                 {"subscribers", 0},
                                 {"writes", 1},
                                 {"triggers", 0}}));

    host.Trigger("@Unruly:later");
    const QVariantList done = host.Do("history", {{"name", "@Unruly:done"}}).toList();
    ASSERT_EQ(done.size(), 1);
    EXPECT_EQ(done.first().toMap().value("by"), "plugin");
    EXPECT_FALSE(done.first().toMap().value("value").isValid());

    const QString url("https://example.com/a%20b?c=d#e");
    host.Do("trigger", {{"name", "@Unruly:open"}, {"value", url}});
    EXPECT_EQ(host.Do("urls"), QVariantList{url});

    EXPECT_EQ(host.Do("unload"), (QVariantMap{{"peersOutstanding", 1}}));
    host.Trigger("@Unruly:later");
    EXPECT_EQ(host.Get("@Unruly:literals"),
              (QVariantMap{{"literal", QVariantList{"literal", "literal"}}, {"own", QVariant()}}));
    EXPECT_EQ(host.Do("history", {{"name", "@Unruly:literals"}}).toList().size(), 1);
    EXPECT_EQ(host.Finish(), 0);
    EXPECT_TRUE(host.Errors().contains("@Unruly:list"));
}

TEST(SurroundingsScenario, FlyersAreSeenPressedAndClosed)
{
    HostProcess host({{}, {"--library", UnrulyPlugIn()}});
    host.Load();
    host.Do("metrics.fault", {{"code", 1}});
    host.Trigger("@Unruly:advertise");
    EXPECT_EQ(host.Do("metrics"), QVariantList());
    host.Trigger("@Unruly:advertise");
    EXPECT_EQ(host.Do("metrics"),
              (QVariantList{
                  QVariantMap{{"code", 7}, {"name", "advertised"}, {"major", true}, {"payload", "payload \u20ac"}}}));

    const QVariantList flyers = host.Do("flyers").toList();
    ASSERT_EQ(flyers.size(), 2);
    EXPECT_EQ(flyers.first(),
              (QVariantMap{{"id", 1},
                           {"title", "Title \u20ac"},
                           {"description", "Text"},
                           {"state", "shown"},
                           {"buttons", QVariantList{QVariantMap{{"caption", "Act"}, {"action", "@Unruly:later"}},
                                                    QVariantMap{{"caption", "Close"}, {"action", QVariant()}}}}}));
    host.Do("flyer.press", {{"flyer", 1}, {"button", 0}});
    EXPECT_EQ(host.Do("history", {{"name", "@Unruly:done"}}).toList().size(), 1);
    host.Do("flyer.press", {{"flyer", 1}, {"button", 1}});
    EXPECT_EQ(host.Do("flyers").toList().first().toMap().value("state"), "closed");
    host.Fails("flyer.press", {{"flyer", 1}, {"button", 1}});
    host.Fails("flyer.press", {{"flyer", 2}, {"button", 2}});

    host.Do("flyer.fault", {{"function", "NlFlyer_ShowFlyer"}, {"code", 9}, {"count", 0}});
    host.Trigger("@Unruly:advertise");
    EXPECT_EQ(host.Do("flyers").toList().last().toMap().value("state"), "created");
    host.Fails("flyer.press", {{"flyer", 3}, {"button", 0}});
}

TEST(SurroundingsScenario, ElevationIsAnsweredAsTold)
{
    HostProcess host;
    host.Load();
    host.Do("elevation", {{"answer", "decline"}});
    host.Trigger(kSettingsUi);
    host.Set(kTimeLimit, "MoveOn");
    EXPECT_EQ(host.Get(kTimeLimit), "MoveOn"); // nothing answers
    EXPECT_EQ(host.StoreGet("user", "common.time.enabled").value("found"), false);
    EXPECT_EQ(host.Do("metrics"), QVariantList());
    host.Do("elevation", {{"answer", "accept"}});
    host.Trigger(kSettingsUi);
    host.Set(kTimeLimit, "MoveOn");
    EXPECT_EQ(host.Get(kTimeLimit), "On");
    EXPECT_EQ(host.Do("metrics"),
              (QVariantList{QVariantMap{{"code", 600}, {"name", "settings_gui_opened"}, {"major", false}}}));
    host.Trigger(kSettingsUiClosed);
}

TEST(SurroundingsScenario, FaultsStrikeThePlugInsCallsOnlyAndAsOftenAsTold)
{
    HostProcess host;
    host.Do("store.fault", {{"function", "OrbStrata_SetBool"}, {"key", "common.time.enabled"}, {"code", 31}});
    host.Do("metrics.fault", {{"code", 9}});
    host.Do("flyer.fault", {{"function", "NlFlyer_ShowFlyer"}, {"code", 9}});
    host.Fails("flyer.fault", {{"function", "NlFlyer_Nothing"}, {"code", 9}});
    const QVariantMap flyerFault{{"library", "flyer"}, {"function", "NlFlyer_ShowFlyer"}, {"code", 9}, {"count", 1}};
    const QVariantMap faults = host.Do("faults").toMap();
    EXPECT_EQ(faults.value("active").toList().size(), 3);
    EXPECT_TRUE(faults.value("active").toList().contains(flyerFault));
    const QVariantMap functions = faults.value("functions").toMap();
    EXPECT_TRUE(functions.value("store").toList().contains("OrbStrata_Subscribe"));
    EXPECT_FALSE(functions.value("store").toList().contains("OrbStrata_CloseHandle")); // has no answer
    host.Load();
    host.StoreSet("user", "common.time.enabled", "bool", false);
    host.Do("settle");
    host.Trigger(kSettingsUi);
    EXPECT_EQ(host.Do("metrics"), QVariantList());
    host.Do("watch", {{"topic", "faults"}});
    host.Set(kTimeLimit, "MoveOn");
    EXPECT_EQ(host.StoreGet("user", "common.time.enabled").value("value"), false);
    const QVariantMap event = host.AwaitEvent([](const QVariantMap& each) { return each["event"] == "faults"; });
    EXPECT_EQ(event["active"], QVariantList{flyerFault}); // the others are used up
    host.Do("store.fault");
    host.Do("flyer.fault");
    host.Set(kTimeLimit, "MoveOn");
    EXPECT_EQ(host.StoreGet("user", "common.time.enabled").value("value"), true);
    EXPECT_FALSE(host.Do("log", {{"level", 2}}).toList().isEmpty());
}

TEST(SurroundingsScenario, StringsArriveBeforeTheirTrigger)
{
    HostProcess host;
    host.Do("strings", {{"language", "de"}, {"values", QVariantMap{{"@X\\Strings:a", "1"}, {"@X\\Strings:b", "2"}}}});
    const QVariantList history = host.Do("history").toList();
    ASSERT_EQ(history.size(), 4);
    EXPECT_EQ(history.last().toMap().value("name"), "@Localization\\MetaData\\Localization:updated");
    EXPECT_EQ(history.last().toMap().value("kind"), "trigger");
    EXPECT_EQ(host.Get("@X\\Strings:b"), "2");
    EXPECT_EQ(host.Do("history", {{"since", 3}}).toList().size(), 1);
    host.Fails("strings", {{"language", "de"}, {"values", QVariantMap{{"no id", "1"}}}});
    EXPECT_EQ(host.Do("history", {{"since", 4}}).toList().size(), 0);
}

TEST(SurroundingsScenario, RegistryIsReadAtTheNextStart)
{
    const QString key("SOFTWARE\\Norlane\\ORB\\Logging\\NLCC\\Veridan");
    HostProcess host;
    const auto traceLines = [&host] {
        host.Load();
        host.Do("unload");
        return host.Do("log", {{"lines", 10000}, {"level", 5}}).toList().size() -
               host.Do("log", {{"lines", 10000}, {"level", 4}}).toList().size();
    };
    EXPECT_EQ(traceLines(), 0);
    host.Do("registry.set", {{"root", "machine"}, {"key", key}, {"value", "LogLevel"}, {"dword", 5}});
    const auto traced = traceLines();
    EXPECT_GT(traced, 10);
    host.Do("registry.remove", {{"root", "machine"}, {"key", key}, {"value", "LogLevel"}});
    EXPECT_EQ(traceLines(), traced);
}

TEST(SurroundingsScenario, NamedEventsAndClipboardHoldTheirState)
{
    HostProcess host;
    const QString name("Global\\Bank/close %1: \u00e4");
    host.Fails("event.state", {{"name", name}});
    host.Do("event.create", {{"name", name}});
    EXPECT_EQ(host.Do("event.state", {{"name", name}}), (QVariantMap{{"signalled", false}}));
    EXPECT_EQ(host.Do("events"), (QVariantList{QVariantMap{{"name", name}, {"signalled", false}}}));
    host.Do("clipboard.set", {{"text", "secret \u20ac"}});
    EXPECT_EQ(host.Do("clipboard.get"), (QVariantMap{{"text", "secret \u20ac"}}));
    EXPECT_EQ(host.Do("flyers"), QVariantList());
    host.Fails("flyer.press", {{"flyer", 1}, {"button", 0}});
}

} // namespace
