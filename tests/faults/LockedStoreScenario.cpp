// Another process is in the middle of a long write.

#include "tests/faults/MainPage.h"

#include <gtest/gtest.h>

#include <sqlite3.h>

namespace
{

/// A write transaction on a host's store, as long as it lives.
class LongWrite
{
public:
    explicit LongWrite(const HostProcess& host)
    {
        EXPECT_EQ(SQLITE_OK, sqlite3_open((host.DataFolder() + "/store.db").toUtf8().constData(), &m_connection));
        sqlite3_busy_timeout(m_connection, 10'000);
        EXPECT_EQ(SQLITE_OK, sqlite3_exec(m_connection, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr));
    }
    ~LongWrite() { sqlite3_close(m_connection); }
    LongWrite(const LongWrite&) = delete;
    LongWrite& operator=(const LongWrite&) = delete;

private:
    sqlite3* m_connection = nullptr;
};

TEST(LockedStoreScenario, ASaveWaitsForTheOtherWriter)
{
    HostProcess host;
    MainPage page(host);
    const bool before = page.StoreHoldsOn();
    {
        const LongWrite write(host);
        host.Post("get", {{"name", MainPage::kSwitch}});
        host.Post("set", {{"name", MainPage::kSwitch}, {"value", before ? "MoveOff" : "MoveOn"}});
        EXPECT_TRUE(host.Receive()["ok"].toBool()); // now comes the save
    }
    EXPECT_TRUE(host.Receive()["ok"].toBool());
    EXPECT_EQ(!before, page.StoreHoldsOn());
    EXPECT_EQ(!before, page.ShowsOn());
}

TEST(LockedStoreScenario, ASaveThatWaitedTooLongIsTakenBackOnThePage)
{
    HostProcess host;
    MainPage page(host);
    const bool before = page.StoreHoldsOn();
    {
        const LongWrite write(host);
        page.Move(!before);
        EXPECT_EQ(before, page.ShowsOn());
        EXPECT_EQ(before, page.StoreHoldsOn());
    }
    EXPECT_FALSE(host.Do("log", {{"level", 2}}).toList().isEmpty());
    page.Move(!before);
    EXPECT_EQ(!before, page.ShowsOn());
    EXPECT_EQ(!before, page.StoreHoldsOn());
}

} // namespace
