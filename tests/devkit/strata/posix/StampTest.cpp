// What other programs do to the files of an open store.

#include "tests/devkit/strata/Program.h"
#include "tests/devkit/strata/StoreFixture.h"

#include <QDir>
#include <QFile>

#include <filesystem>

using Kind = Opened::Kind;
using testing::ElementsAre;

namespace
{

class StampTest : public StoreFixture
{
protected:
    /// Has another process write a number under "answer" of the store at `file`.
    static void WriteElsewhere(const std::string& file, int number)
    {
        Program other("strata_helper", {QString::fromStdString(file), "echo"});
        other.Send(std::to_string(number));
        EXPECT_EQ(other.Line(), std::to_string(number));
    }
    std::string StampFile() const { return StoreFile() + "-stamp"; }
};

TEST_F(StampTest, StampThatIsCutOrRemovedHurtsNobodyAndSilencesNobody)
{
    Deliveries heard;
    const Opened reader(Kind::Normal);
    const Opened writer(Kind::Product);
    heard.Watch(reader, L"");
    OrbStrata_SetInt32(writer, L"answer", 1);
    EXPECT_THAT(heard.WaitFor(1), ElementsAre("answer changed 1"));
    std::filesystem::resize_file(StampFile(), 0);
    EXPECT_EQ(OrbStrata_GetInt32(reader, L"answer", 0, nullptr), 1);
    WriteElsewhere(StoreFile(), 2);
    EXPECT_THAT(heard.WaitFor(2), ElementsAre("answer changed 1", "answer changed 2"));
    EXPECT_TRUE(std::filesystem::remove(StampFile()));
    WriteElsewhere(StoreFile(), 3);
    EXPECT_EQ(heard.WaitFor(3).size(), 3U);
    EXPECT_EQ(OrbStrata_GetInt32(reader, L"answer", 0, nullptr), 3);
    EXPECT_EQ(OrbStrata_SetInt32(writer, L"answer", 4), 0U);
}

TEST_F(StampTest, ReaderWithoutSubscriptionNoticesThatTheStampWasReplaced)
{
    const Opened reader(Kind::Normal);
    WriteElsewhere(StoreFile(), 1);
    EXPECT_EQ(OrbStrata_GetInt32(reader, L"answer", 0, nullptr), 1);
    EXPECT_TRUE(std::filesystem::remove(StampFile()));
    WriteElsewhere(StoreFile(), 2);
    EXPECT_EQ(OrbStrata_GetInt32(reader, L"answer", 0, nullptr), 2);
}

TEST_F(StampTest, StampThatIsALinkLeavesItsTargetAlone)
{
    const std::string target = Path("precious");
    for (const bool symbolic : {true, false})
    {
        std::filesystem::create_directories(Path("data"));
        ASSERT_TRUE(QFile(QString::fromStdString(target)).open(QIODevice::WriteOnly));
        std::filesystem::remove(StampFile());
        symbolic ? std::filesystem::create_symlink(target, StampFile())
                 : std::filesystem::create_hard_link(target, StampFile());
        const Opened writer(Kind::Product);
        const Opened reader(Kind::Normal);
        EXPECT_EQ(OrbStrata_SetInt32(writer, L"answer", symbolic ? 1 : 2), 0U);
        EXPECT_EQ(std::filesystem::file_size(target), 0U);
        WriteElsewhere(StoreFile(), 3);
        EXPECT_EQ(OrbStrata_GetInt32(reader, L"answer", 0, nullptr), 3);
    }
}

TEST_F(StampTest, WriteThatCannotBeAnnouncedIsRefused)
{
    const Opened writer(Kind::Product);
    std::filesystem::create_directories(StampFile() + "/in the way");
    EXPECT_EQ(OrbStrata_SetInt32(writer, L"answer", 1), OrbStrataResult{ORB_STRATA_STORE_FAILED});
    EXPECT_THAT(LastError(), testing::HasSubstr("-stamp"));
    EXPECT_EQ(Stored(writer, L"answer"), "");
}

TEST_F(StampTest, StoreThatIsReachedByALinkHasTheSameStampAndTheSameLog)
{
    Deliveries heard;
    const Opened reader(Kind::Normal);
    heard.Watch(reader, L"answer");
    const std::string link = Path("link.db");
    std::filesystem::create_symlink(StoreFile(), link);
    WriteElsewhere(link, 1);
    EXPECT_THAT(heard.WaitFor(1), ElementsAre("answer changed 1"));
    EXPECT_FALSE(std::filesystem::exists(link + "-stamp"));

    ASSERT_GT(std::filesystem::file_size(StoreFile() + "-wal"), 0U);
    std::filesystem::resize_file(StoreFile(), 0); // damage, which is not to be taken for a store that was never made
    Program other("strata_helper", {QString::fromStdString(link), "make"});
    other.Send(link);
    EXPECT_THAT(other.Line(), testing::HasSubstr("is damaged"));
}

TEST_F(StampTest, WriteAfterTheFolderWasDeletedIsInTheStoreThatIsThereThen)
{
    Deliveries heard;
    const Opened writer(Kind::Product);
    const Opened reader(Kind::Normal);
    heard.Watch(reader, L"");
    OrbStrata_SetInt32(writer, L"old", 1);
    EXPECT_THAT(heard.Take(), ElementsAre("old changed 1"));
    std::filesystem::remove_all(Path("data"));
    EXPECT_EQ(OrbStrata_GetInt32(reader, L"old", 0, nullptr), 1);
    EXPECT_FALSE(std::filesystem::exists(Path("data"))) << "a read made a store";
    EXPECT_EQ(OrbStrata_SetInt32(writer, L"new", 2), 0U);
    EXPECT_THAT(heard.WaitFor(2), ElementsAre("old removed", "new changed 2"));
    Program other("strata_helper", {QString::fromStdString(StoreFile()), "check", "new", "0"});
    EXPECT_EQ(other.Line(), "all");
    std::filesystem::remove_all(Path("data"));
    WriteElsewhere(StoreFile(), 3);
    EXPECT_EQ(heard.WaitFor(4).back(), "answer changed 3");
    EXPECT_EQ(OrbStrata_GetInt32(reader, L"new", 0, nullptr), 0);
}

} // namespace
