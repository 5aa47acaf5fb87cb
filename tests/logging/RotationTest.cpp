#include "tests/logging/LogFixture.h"

#include "logging/FileAccess.h"
#include "logging/FileUtilsWin32.h"
#include "tests/support/FailingAllocation.h"

#include <QDir>
#include <QFile>

#include <set>

namespace
{

using NlOrbLogging::FileAccess;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

/// A file system that refuses some operations, and tells of all that move or delete.
class RefusingFileUtils : public NlOrbLogging::FileUtilsWin32
{
public:
    struct Orders
    {
        std::set<std::wstring> refusedRenames; // by old name
        std::vector<std::wstring> deleted;     // file names
        int stuckDeleteNames = 0;              // the first of them exist and stay
    };

    explicit RefusingFileUtils(Orders& orders) : m_orders(orders) {}

    bool FileRename(const std::wstring& from, const std::wstring& to) override
    {
        return m_orders.refusedRenames.count(NameOf(from)) == 0 && FileUtilsWin32::FileRename(from, to);
    }
    bool FileDelete(const std::wstring& path) override
    {
        m_orders.deleted.push_back(NameOf(path));
        return FileUtilsWin32::FileDelete(path);
    }
    bool FileExists(const std::wstring& path) override
    {
        const auto suffix = path.rfind(L"__delete_");
        return suffix != std::wstring::npos ? std::stoi(path.substr(suffix + 9)) <= m_orders.stuckDeleteNames
                                            : FileUtilsWin32::FileExists(path);
    }

private:
    static std::wstring NameOf(const std::wstring& path) { return path.substr(path.find_last_of(L"/\\") + 1); }

    Orders& m_orders;
};

class RefusingLogger : public NlOrbLogging::LoggerWin
{
public:
    explicit RefusingLogger(RefusingFileUtils::Orders& orders) : m_orders(orders) {}

    std::unique_ptr<NlOrbLogging::FileUtils> CreateFileUtils() override
    {
        return std::make_unique<RefusingFileUtils>(m_orders);
    }

private:
    RefusingFileUtils::Orders& m_orders;
};

class Rotation : public LogFixture
{
protected:
    Rotation() { m_logger = std::make_unique<RefusingLogger>(m_orders); }
    ~Rotation() override { m_logger.reset(); } // which gives the last orders

    /// Starts a session without banners.
    void Start(std::uint32_t maximumKB, std::uint32_t count)
    {
        SetLimits(maximumKB, count);
        Initialize(NlOrbLogging::BannerAtDebug);
    }
    void Write(const wchar_t* text) { m_logger->Log(4, L"%s", text); }
    std::vector<std::wstring> Numbered(int number) const
    {
        return Messages(FileAccess::NumberedName(L"Veridan.log", static_cast<std::uint32_t>(number)));
    }

    RefusingFileUtils::Orders m_orders;
};

TEST(NumberedName, StandsBeforeTheLastDot)
{
    EXPECT_EQ(FileAccess::NumberedName(L"Veridan.log", 0), L"Veridan.log");
    EXPECT_EQ(FileAccess::NumberedName(L"Veridan.log", 1), L"Veridan.1.log");
    EXPECT_EQ(FileAccess::NumberedName(L"a.b.log", 99), L"a.b.99.log");
    EXPECT_EQ(FileAccess::NumberedName(L"Veridan", 2), L"Veridan.2");
}

TEST_F(Rotation, ALimitOfNothingLeavesRoomForTheMarkAlone)
{
    Start(0, 2);
    for (const wchar_t* const text : {L"a", L"b", L"c", L"d"})
        Write(text);
    EXPECT_THAT(Numbered(0), ElementsAre(L"d"));
    EXPECT_THAT(Numbered(1), ElementsAre(L"c"));
    EXPECT_THAT(Numbered(2), ElementsAre(L"b"));
    EXPECT_THAT(FileNames(), ElementsAre(L"Veridan.1.log", L"Veridan.2.log", L"Veridan.log"));
}

TEST_F(Rotation, AFileOfExactlyTheLimitIsWrittenToAgain)
{
    Start(1, 1);
    Put(L"Veridan.log", "\xFF\xFE" + std::string(1022, 'x'));
    Write(L"fits");
    EXPECT_THAT(FileNames(), ElementsAre(L"Veridan.log"));
    Write(L"does not");
    EXPECT_THAT(FileNames(), ElementsAre(L"Veridan.1.log", L"Veridan.log"));
    EXPECT_THAT(Numbered(0), ElementsAre(L"does not"));
}

TEST_F(Rotation, ACountOfNoneDeletesTheLiveFile)
{
    Start(0, 0);
    Write(L"a");
    Write(L"b");
    EXPECT_THAT(FileNames(), ElementsAre(L"Veridan.log"));
    EXPECT_THAT(Numbered(0), ElementsAre(L"b"));
    EXPECT_THAT(m_orders.deleted, ElementsAre(L"Veridan.log__delete_1"));
}

TEST_F(Rotation, NeverMoreThanNinetyNineAreKept)
{
    for (const std::uint32_t count : {99U, 150U})
    {
        Start(0, count);
        for (int i = 0; i < 110; ++i)
            m_logger->Log(4, L"%d", i);
        m_logger->Shutdown();
        EXPECT_EQ(FileNames().size(), 100U);
        EXPECT_THAT(Numbered(99), ElementsAre(L"10"));
        QDir(QString::fromStdWString(Folder())).removeRecursively();
    }
}

TEST_F(Rotation, AGapInTheNumbersIsNoObstacle)
{
    Start(0, 3);
    Put(L"Veridan.2.log", "old");
    Write(L"a");
    Write(L"b");
    EXPECT_THAT(FileNames(), ElementsAre(L"Veridan.1.log", L"Veridan.3.log", L"Veridan.log"));
}

TEST_F(Rotation, ALiveFileThatCannotBeMovedCostsTheLineAndIsTriedAgain)
{
    Start(0, 1);
    Write(L"a");
    m_orders.refusedRenames = {L"Veridan.log"};
    Write(L"lost");
    EXPECT_THAT(Numbered(0), ElementsAre(L"a"));
    m_orders.refusedRenames.clear();
    Write(L"b");
    EXPECT_THAT(Numbered(0), ElementsAre(L"b"));
    EXPECT_THAT(Numbered(1), ElementsAre(L"a"));
}

TEST_F(Rotation, AFileThatCannotBeRenamedIsDeletedUnderItsOwnName)
{
    Start(0, 0);
    Write(L"a");
    m_orders.refusedRenames = {L"Veridan.log"};
    Write(L"b");
    EXPECT_THAT(m_orders.deleted, ElementsAre(L"Veridan.log"));
    EXPECT_THAT(Numbered(0), ElementsAre(L"b"));
}

TEST_F(Rotation, DeleteNamesAreTakenInTurnAndTheLastOneEvenIfTaken)
{
    Start(0, 0);
    m_orders.stuckDeleteNames = 7;
    Write(L"a");
    Write(L"b");
    m_orders.stuckDeleteNames = 99;
    Write(L"c");
    EXPECT_THAT(m_orders.deleted, ElementsAre(L"Veridan.log__delete_8", L"Veridan.log__delete_99"));
}

TEST_F(Rotation, WithoutMemoryALineIsLostAndNothingElse)
{
    bool failed = true;
    for (std::size_t allocations = 0; failed; ++allocations)
    {
        SetLimits(0, 1);
        m_logger = std::make_unique<RefusingLogger>(m_orders);
        m_debugOutput.Take();
        {
            const FailingAllocation failure(allocations);
            EXPECT_NO_THROW(Initialize());
            EXPECT_NO_THROW(m_logger->Log(4, L"%s %hs", L"first", "\xC3\xA4"));
            EXPECT_NO_THROW(m_logger->LogA(4, "%s", "second, which rotates"));
            EXPECT_NO_THROW(m_logger->Flush());
            failed = failure.HasFailed();
        }
        if (!m_logger->IsEnabled(4))
            Initialize(); // its names could not be kept
        m_logger->Log(4, L"after");
        ASSERT_EQ(Messages().back(), L"after") << allocations;
        ASSERT_THAT(m_debugOutput.Take(), IsEmpty()) << allocations;
    }
}

TEST_F(Rotation, AnotherProcessesRotationIsFollowedNotRepeated)
{
    Start(1, 5);
    const std::wstring line(600, L'x');
    Write(line.c_str());
    QDir folder(QString::fromStdWString(Folder()));
    ASSERT_TRUE(folder.rename(QStringLiteral("Veridan.log"), QStringLiteral("Veridan.1.log")));
    Put(L"Veridan.log", "\xFF\xFE");
    Write(L"after");
    EXPECT_THAT(FileNames(), ElementsAre(L"Veridan.1.log", L"Veridan.log"));
    EXPECT_THAT(Numbered(0), ElementsAre(L"after"));
}

TEST_F(Rotation, AnIdleLoggerFollowsTheRotationsOfOthers)
{
    Start(1, 2);
    Write(L"a");
    RefusingLogger other(m_orders);
    other.Initialize(L"NLCC", L"Veridan", 4, NlOrbLogging::BannerAtDebug);
    other.Log(4, L"%s", std::wstring(600, L'x').c_str());
    other.Log(4, L"b");
    Write(L"c");
    other.Log(4, L"d");
    EXPECT_THAT(Numbered(0), ElementsAre(L"b", L"c", L"d"));
    EXPECT_THAT(FileNames(), ElementsAre(L"Veridan.1.log", L"Veridan.log"));
}

TEST_F(Rotation, ARenameThatTheSystemRefusesIsToldToTheDebugger)
{
    NlOrbLogging::FileUtilsWin32 utils;
    EXPECT_FALSE(utils.FileRename(FilePath(L"absent"), FilePath(L"new")));
    const std::vector<std::wstring> texts = m_debugOutput.Take();
    ASSERT_EQ(texts.size(), 1U);
    EXPECT_THAT(texts[0], StartsWith(L"nl_orb_log!FileUtilsWin32::FileRename(): MoveFileEx '" + FilePath(L"absent") +
                                     L"' -> '" + FilePath(L"new") + L"' failed with Win32 error: "));
    EXPECT_EQ(texts[0].back(), L'\n');
}

TEST_F(Rotation, ALimitBeyondFourGigabytesIsNotTakenForASmallOne)
{
    Start(0x400000, 1);
    Write(L"a");
    Write(L"b");
    EXPECT_THAT(FileNames(), ElementsAre(L"Veridan.log"));
}

} // namespace
