// A store whose file cannot grow any more.

#include "tests/faults/MainPage.h"
#include "tests/scenarios/Strata.h"

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>

namespace
{

/// Starts a program that may write no file beyond this size, as if the disk were full then.
QStringList WithFilesUpTo(qint64 bytes)
{
    return {"sh", "-c", QStringLiteral("trap '' XFSZ; ulimit -f %1; exec \"$0\" \"$@\"").arg(bytes / 512)};
}

TEST(FullDiskScenario, WhatCannotBeSavedIsNotShownAndIsSavedWhenThereIsRoom)
{
    QTemporaryDir folder;
    Strata(folder.path()).Run({"seed"});
    qint64 size = 0;
    for (const char* file : {"/store.db", "/store.db-wal"})
        size = std::max(size, QFileInfo(folder.path() + file).size());

    bool wanted = false;
    {
        HostProcess host({folder.path(), {}, true, WithFilesUpTo(size + 200'000)});
        MainPage page(host);
        bool saved = true;
        for (int moves = 0; saved && moves < 1000; ++moves)
        {
            wanted = !page.StoreHoldsOn();
            page.Move(wanted);
            EXPECT_EQ(page.StoreHoldsOn(), page.ShowsOn());
            saved = page.ShowsOn() == wanted;
        }
        EXPECT_FALSE(saved) << "the file never was too large";
        EXPECT_FALSE(host.Do("log", {{"level", 2}}).toList().isEmpty());
        EXPECT_EQ(0, host.Finish());
    }
    HostProcess host({folder.path(), {}});
    EXPECT_NE(wanted, host.StoreGet("user", MainPage::kKey)["value"].toBool());
    MainPage page(host);
    page.Move(wanted);
    EXPECT_EQ(wanted, page.ShowsOn());
    EXPECT_EQ(wanted, page.StoreHoldsOn());
}

} // namespace
