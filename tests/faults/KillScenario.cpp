// Hosts that are killed while they save.

#include "tests/faults/MainPage.h"
#include "tests/scenarios/Strata.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace
{

constexpr int kKills = VERIDAN_KILLS;
constexpr const char* kSites = "windows.browsing_protection.internal.sites.list";

struct Command
{
    const char* op;
    QVariantMap arguments;
};

/// What people do in one round, other values than in the round before, and what that means for the store.
struct Round
{
    explicit Round(int number)
    {
        const bool on = number % 2 == 0;
        Set(MainPage::kSwitch, on ? "MoveOn" : "MoveOff");
        Set("@TimeLimit\\Data:time_limit_state", on ? "MoveOff" : "MoveOn");
        Set("@SafeSearch\\Data:safe_search_state", on ? "MoveOn" : "MoveOff");
        chosen[MainPage::kKey] = on;
        chosen["common.time.enabled"] = !on;
        chosen["common.time.quota.enabled"] = !on;
        chosen["windows.browsing_protection.search_result_filter.enabled"] = on;

        const int hour = number % 20;
        QString week(168, '1');
        week.replace(hour, 2, "00");
        Set("@TimeLimit\\Data:time_slots", week);
        Set("@TimeLimit\\Data:weekday_hours_value", number % 7);
        commands.push_back({"trigger", {{"name", "@Veridan\\Settings\\Triggers:save"}}});
        chosen["common.time.curfew.monday.ranges"] =
            QVariantList{QVariantMap{{"from", 3600 * hour}, {"until", 3600 * (hour + 2)}}};
        for (const char* day : {"sunday", "monday", "tuesday", "wednesday", "thursday", "friday", "saturday"})
            chosen[QStringLiteral("common.time.quota.%1.duration").arg(day)] = 3600 * (number % 7);

        address = QStringLiteral("%1.example").arg(number, 3, 10, QLatin1Char('0'));
        Set("@ContentControl\\WebsiteRestrictions:denied_action_item", QVariantMap{{"new", address}});
    }

    void Set(const char* name, const QVariant& value)
    {
        commands.push_back({"set", {{"name", name}, {"value", value}}});
    }

    std::vector<Command> commands;
    QVariantMap chosen;
    QString address; // of a website that is added
};

QVariantMap Values(HostProcess& host, const char* scope)
{
    QVariantMap values;
    const QVariantMap entries = host.Do("store.list", {{"scope", scope}}).toMap();
    for (auto entry = entries.begin(); entry != entries.end(); ++entry)
        values[entry.key()] = entry.value().toMap()["value"];
    return values;
}

/// The store as a new host finds it, which has to hold for each key what it held or what was chosen.
void Check(const QVariantMap& before, const QVariantMap& after, const Round& round)
{
    EXPECT_EQ(before.keys(), after.keys());
    for (auto value = after.begin(); value != after.end(); ++value)
    {
        const QVariant old = before[value.key()];
        QVariantList sites = value.value().toList();
        if (value.key() == kSites && sites.size() == old.toList().size() + 1)
        {
            EXPECT_EQ(round.address, sites.takeLast().toMap()["url"].toString());
            EXPECT_EQ(old, QVariant(sites));
        }
        else
            EXPECT_TRUE(value.value() == old || value.value() == round.chosen.value(value.key()))
                << qUtf8Printable(value.key()) << ": " << testing::PrintToString(value.value());
    }
}

class KillScenario : public testing::Test
{
protected:
    /// A number below `end`.
    int Random(int end) { return std::uniform_int_distribution<int>(0, end - 1)(m_random); }

    /// Plays the round and kills the host somewhere on the way.
    void Play(HostProcess& host, const Round& round)
    {
        for (const Command& command : round.commands)
            host.Post(command.op, command.arguments);
        for (int answers = 1 + Random(static_cast<int>(round.commands.size())); answers > 0; --answers)
            EXPECT_TRUE(host.Receive()["ok"].toBool());
        QElapsedTimer timer;
        timer.start();
        for (const qint64 moment = Random(500'000); timer.nsecsElapsed() < moment;) // into the command after that
        {}
        host.Kill();
    }

    const unsigned m_seed = qEnvironmentVariableIsSet("VERIDAN_SEED") ? qEnvironmentVariable("VERIDAN_SEED").toUInt()
                                                                      : std::random_device()();
    std::mt19937 m_random{m_seed};
};

TEST_F(KillScenario, EachKeyHoldsTheOldOrTheNewValueAfterEachKill)
{
    SCOPED_TRACE("VERIDAN_SEED=" + std::to_string(m_seed));
    QTemporaryDir folder;
    Strata(folder.path()).Run({"seed"});
    QVariantMap user;
    QVariantMap system;
    std::unique_ptr<Round> killed;
    int cut = 0;
    for (int number = 0; number <= kKills && !HasFailure(); ++number)
    {
        HostProcess host({folder.path(), {}});
        const QVariantMap userNow = Values(host, "user");
        const QVariantMap systemNow = Values(host, "system");
        if (killed)
        {
            Check(user, userNow, *killed);
            EXPECT_EQ(system, systemNow);
            cut += userNow[kSites] == user[kSites] ? 1 : 0;
        }
        user = userNow;
        system = systemNow;
        killed = std::make_unique<Round>(number);
        host.Load();
        host.Trigger("@Veridan\\Settings\\Triggers:request_show_settings_ui");
        Play(host, *killed);
    }
    EXPECT_LT(0, cut) << "no kill came before the end of a round";
}

} // namespace
