#include "tests/scenarios/HostProcess.h"
#include "tests/scenarios/Strata.h"

#include <gmock/gmock.h>

namespace
{

TEST(MainPageScenario, AnotherProgramsChangeAppearsOnThePage)
{
    constexpr const char* kStatus = "@TimeLimit\\Data:time_limit_status";
    HostProcess host;
    host.Load();
    host.Do("watch", {{"prefix", kStatus}});
    Strata(host.DataFolder()).Set("common.time.enabled", "true", {"--type", "bool"});
    const QVariantMap event = host.AwaitEvent([](const QVariantMap& row) { return row["value"] == "On"; });
    EXPECT_EQ(kStatus, event["name"].toString());
    host.Do("settle");
    EXPECT_EQ("WfOn", host.Get("@ContentControl\\Status:sub_status").toString());
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

} // namespace
