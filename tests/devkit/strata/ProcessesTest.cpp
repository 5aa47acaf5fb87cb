#include "tests/devkit/strata/Program.h"
#include "tests/devkit/strata/RawStore.h"
#include "tests/devkit/strata/StoreFixture.h"

#include <QFile>

#include <algorithm>
#include <filesystem>
#include <future>
#include <memory>
#include <random>

using Kind = Opened::Kind;

namespace
{

class Processes : public StoreFixture
{
protected:
    std::unique_ptr<Program> Start(const QStringList& command)
    {
        return std::make_unique<Program>("strata_helper", QStringList{QString::fromStdString(StoreFile())} + command);
    }
};

TEST_F(Processes, ChangesOfAnotherProcessComeInOrderOnceEach)
{
    constexpr int kCount = 500;
    Deliveries heard;
    const Opened reader(Kind::Normal);
    heard.Watch(reader, L"k");
    const auto writer = Start({"write", "k", QString::number(kCount)});
    std::vector<std::string> expected;
    for (int i = 0; i < kCount; ++i)
    {
        expected.push_back("kobject0 changed {\"n\":" + std::to_string(i) + "}");
        expected.push_back("k" + std::to_string(i) + " changed " + std::to_string(i));
    }
    EXPECT_EQ(writer->ExitCode(), 0); // reads what the writer says, which would wait for it otherwise
    EXPECT_EQ(heard.WaitFor(expected.size()), expected);
    EXPECT_EQ(heard.Take().size(), expected.size());
}

TEST_F(Processes, NothingIsMissedWhileOthersOpenTheStoreAndCloseIt)
{
    constexpr std::chrono::seconds kSoak{4};
    Deliveries heard;
    const Opened reader(Kind::Normal);
    heard.Watch(reader, L"answer");
    const auto writer = Start({"echo"});
    const auto oneOpener = Start({"open"});
    const auto otherOpener = Start({"open"});
    std::vector<std::string> written;
    const auto end = std::chrono::steady_clock::now() + kSoak;
    for (int i = 1; std::chrono::steady_clock::now() < end; ++i)
    {
        writer->Send(std::to_string(i));
        ASSERT_EQ(writer->Line(), std::to_string(i));
        ASSERT_EQ(OrbStrata_GetInt32(reader, L"answer", 0, nullptr), i);
        written.push_back("answer changed " + std::to_string(i));
    }
    EXPECT_EQ(heard.WaitFor(written.size()), written);
}

TEST_F(Processes, StoreIsMadeOnceHoweverManyOpenItAtTheSameMoment)
{
    std::vector<std::unique_ptr<Program>> openers;
    for (int i = 0; i < 4; ++i)
        openers.push_back(Start({"make"}));
    for (int round = 0; round < 30; ++round)
    {
        const std::string file = Path(("new" + std::to_string(round) + "/store.db").c_str());
        for (const auto& opener : openers)
            opener->Send(file);
        for (const auto& opener : openers)
            ASSERT_EQ(opener->Line(), "made") << "round " << round;
    }
}

TEST_F(Processes, WriteWaitsForALockAQuarterOfASecondOnceAndThenSaysBusy)
{
    const Opened writer(Kind::Product);
    ASSERT_EQ(OrbStrata_SetInt32(writer, L"key", 0), 0U);
    RawStore other(StoreFile());
    ASSERT_TRUE(other.Run("BEGIN IMMEDIATE"));
    const auto start = std::chrono::steady_clock::now();
    for (int i = 1; i <= 10; ++i)
        EXPECT_EQ(OrbStrata_SetInt32(writer, L"key", i), OrbStrataResult{ORB_STRATA_BUSY});
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
    EXPECT_THAT(LastError(), testing::HasSubstr("busy"));
    EXPECT_EQ(OrbStrata_GetInt32(writer, L"key", -1, nullptr), 0);
    ASSERT_TRUE(other.Run("ROLLBACK"));
    EXPECT_EQ(OrbStrata_SetInt32(writer, L"key", 11), 0U);
}

TEST_F(Processes, LogStaysShortThoughSomeoneAlwaysReadsAndSomeoneAlwaysWrites)
{
    constexpr std::uintmax_t kBound = 40 * 1024 * 1024; // of 80 that are written
    const Opened store(Kind::Product);
    ASSERT_EQ(OrbStrata_SetInt32(store, L"key", 0), 0U);
    std::vector<std::unique_ptr<Program>> writers;
    for (const char* key : {"a", "b", "c", "d"})
        writers.push_back(Start({"fill", key, "900"}));
    RawStore readers[] = {RawStore(StoreFile()), RawStore(StoreFile())};
    const auto read = [](RawStore& reader) {
        return reader.Run("BEGIN") && reader.Number("SELECT count(*) FROM entries") > 0;
    };
    std::uintmax_t longest = 0;
    EXPECT_TRUE(read(readers[1]));
    for (const auto& writer : writers)
    {
        while (writer->Process().state() != QProcess::NotRunning && !writer->Process().waitForFinished(0))
        {
            // One of the two is always in the middle of reading.
            EXPECT_TRUE(read(readers[0]) && readers[1].Run("COMMIT"));
            EXPECT_TRUE(read(readers[1]) && readers[0].Run("COMMIT"));
            longest = std::max(longest, std::filesystem::file_size(std::filesystem::u8path(StoreFile() + "-wal")));
        }
    }
    EXPECT_LT(longest, kBound);
}

TEST_F(Processes, LogThatAReaderHeldUpIsShortAgainWhenItHasGone)
{
    constexpr std::uintmax_t kLimit = 4 * 1024 * 1024;
    const auto logSize = [this] { return std::filesystem::file_size(std::filesystem::u8path(StoreFile() + "-wal")); };
    const Opened writer(Kind::Product);
    ASSERT_EQ(OrbStrata_SetInt32(writer, L"key", 0), 0U);
    RawStore reader(StoreFile());
    EXPECT_TRUE(reader.Run("BEGIN") && reader.Number("SELECT count(*) FROM entries") > 0);
    EXPECT_EQ(Start({"fill", "a", "900"})->ExitCode(), 0);
    EXPECT_GT(logSize(), 2 * kLimit);
    EXPECT_TRUE(reader.Run("COMMIT"));
    for (int i = 1; i <= 3; ++i)
        EXPECT_EQ(OrbStrata_SetInt32(writer, L"key", i), 0U);
    EXPECT_LE(logSize(), kLimit);
}

TEST_F(Processes, WritersTakeTurnsAndLoseNothing)
{
    constexpr int kCount = 100;
    std::vector<std::unique_ptr<Program>> writers;
    for (const char* prefix : {"a", "b", "c"})
        writers.push_back(Start({"write", prefix, QString::number(kCount)}));
    for (const auto& writer : writers)
        EXPECT_EQ(writer->ExitCode(), 0);
    const Opened reader(Kind::Normal);
    for (const wchar_t* prefix : {L"a", L"b", L"c"})
    {
        for (int i = 0; i < kCount; ++i)
        {
            const std::wstring key = prefix + std::to_wstring(i);
            ASSERT_EQ(OrbStrata_GetInt32(reader, key.c_str(), -1, nullptr), i);
        }
    }
}

TEST_F(Processes, KilledWriterLosesNothingThatItWasToldIsWritten)
{
    std::mt19937 random(20); // the same moments on every machine would be chance anyway
    std::uniform_int_distribution<int> lines(0, 60);
    Deliveries heard;
    const Opened follower(Kind::Normal);
    heard.Watch(follower, L"");
    for (int round = 0; round < 25; ++round)
    {
        const std::string prefix = "r" + std::to_string(round) + ".";
        const auto writer = Start({"write", QString::fromStdString(prefix), "1000000"});
        const int atLeast = lines(random);
        for (int i = 0; i < atLeast; ++i)
            ASSERT_EQ(writer->Line(), std::to_string(i));
        writer->Kill();
        EXPECT_EQ(writer->ExitCode(), -1);
        int acknowledged = atLeast;
        for (const char c : writer->RestOfOutput())
            acknowledged += c == '\n' ? 1 : 0;
        std::vector<std::string> keys;
        for (const std::string& change : heard.Take())
            if (change.find("object") == std::string::npos)
                keys.push_back(change.substr(0, change.find(' ')));
        ASSERT_GE(keys.size(), static_cast<std::size_t>(acknowledged));
        for (std::size_t i = 0; i < keys.size(); ++i)
            ASSERT_EQ(keys[i], prefix + std::to_string(i));
        EXPECT_EQ(Start({"check", QString::fromStdString(prefix), QString::number(acknowledged)})->Line(), "all");
    }
    const Opened writer(Kind::Product);
    EXPECT_EQ(OrbStrata_SetBool(writer, L"still", true), 0U);
}

TEST_F(Processes, SubscriberThatFellFarBehindHearsWhatIsDifferentThen)
{
    Deliveries heard;
    const Opened writer(Kind::Product);
    const Opened reader(Kind::Normal);
    OrbStrata_SetInt32(writer, L"doomed", 1);
    OrbStrata_SetInt32(writer, L"untouched", 1);
    std::promise<void> entered;
    std::promise<void> release;
    std::once_flag once;
    heard.onDelivery = [&] {
        std::call_once(once, [&] {
            entered.set_value();
            release.get_future().wait_for(kPatience);
        });
    };
    heard.Watch(reader, L"");
    OrbStrata_SetInt32(writer, L"hammered", 0);
    entered.get_future().wait();
    EXPECT_EQ(Start({"hammer", "12000"})->Line(), "done");
    release.set_value();
    EXPECT_THAT(heard.Take(), testing::ElementsAre("hammered changed 0", "doomed removed", "hammered changed 12000"));
    EXPECT_EQ(OrbStrata_GetInt32(reader, L"hammered", 0, nullptr), 12000);
}

TEST_F(Processes, ReadOnlyStoreIsReadAndSaysWhyItIsNotWritten)
{
    {
        const Opened writer(Kind::Product);
        OrbStrata_SetInt32(writer, L"key", 1);
    }
    const auto everyoneReads = QFile::ReadOwner | QFile::ReadUser | QFile::ReadGroup | QFile::ReadOther;
    const auto everyoneEnters = QFile::ExeOwner | QFile::ExeUser | QFile::ExeGroup | QFile::ExeOther;
    for (const char* file : {"data/store.db", "data/store.db-wal", "data/store.db-shm", "data/store.db-stamp"})
        ASSERT_TRUE(QFile::setPermissions(QString::fromStdString(Path(file)), everyoneReads)) << file;
    for (const char* folder : {"data", "."})
        QFile::setPermissions(QString::fromStdString(Path(folder)), everyoneReads | everyoneEnters);
    const auto other = Start({"readonly"});
    const std::string value = other->Line();
    if (value == "privileged")
        GTEST_SKIP() << "this process cannot give up its rights";
    EXPECT_EQ(value, "1");
    EXPECT_EQ(other->Line(), std::to_string(ORB_STRATA_STORE_FAILED));
    EXPECT_THAT(other->Line(), testing::HasSubstr("may not be written"));
    for (const char* folder : {".", "data"})
        QFile::setPermissions(QString::fromStdString(Path(folder)), everyoneReads | everyoneEnters | QFile::WriteOwner);
}

} // namespace
