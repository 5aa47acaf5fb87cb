#include "tests/logging/LogFixture.h"

#include "logging/FileLowLevel.h"
#include "platform/Path.h"

#include <QDir>
#include <QFile>

namespace
{

using NlOrbLogging::FileLowLevel;
using testing::ElementsAre;
using testing::IsEmpty;

class LogFile : public LogFixture
{
protected:
    void Start() { Initialize(NlOrbLogging::BannerAtDebug); }

    qint64 SizeOf(const std::wstring& path) const { return QFile(QString::fromStdWString(path)).size(); }
};

/// A disk with room for so many bytes.
class FullDisk : public FileLowLevel
{
public:
    explicit FullDisk(std::uint32_t& room) : m_room(room) {}

    bool Write(const void* data, std::uint32_t bytes) override
    {
        if (bytes > m_room)
            return false;
        m_room -= bytes;
        return FileLowLevel::Write(data, bytes);
    }

private:
    std::uint32_t& m_room;
};

TEST_F(LogFile, OnlyANewFileGetsAByteOrderMark)
{
    Start();
    m_logger->Log(4, L"a");
    m_logger->Shutdown();
    Start();
    m_logger->Log(4, L"b");
    EXPECT_THAT(Messages(), ElementsAre(L"a", L"b"));
}

TEST_F(LogFile, IsMadeByTheFirstLine)
{
    Start();
    EXPECT_FALSE(QDir(QString::fromStdWString(Folder())).exists());
    m_logger->Log(4, L"a");
    EXPECT_THAT(FileNames(), ElementsAre(L"Veridan.log"));
}

TEST_F(LogFile, IsNotOpenedTwice)
{
    QDir().mkpath(QString::fromStdWString(Folder()));
    FileLowLevel file;
    ASSERT_TRUE(file.Open(FilePath(), nullptr));
    EXPECT_FALSE(file.Open(FilePath(L"other.log"), nullptr));
    EXPECT_EQ(file.GetSize(), 2U);
    file.Close();
    EXPECT_EQ(file.GetSize(), 0U);
    EXPECT_TRUE(file.Open(FilePath(), nullptr));
}

TEST_F(LogFile, HoldsCharactersOfAllPlanes)
{
    Start();
    m_logger->Log(4, L"%s", L"\xE4\x20AC\U0001F600");
    EXPECT_THAT(Messages(), ElementsAre(L"\xE4\x20AC\U0001F600"));
}

TEST_F(LogFile, WhatIsInItsPlaceCostsTheLinesAndNothingElse)
{
    QFile inPlaceOfTheFolder(m_folder.filePath(QStringLiteral("Norlane")));
    ASSERT_TRUE(inPlaceOfTheFolder.open(QIODevice::WriteOnly));
    inPlaceOfTheFolder.close();
    Start();
    m_logger->Log(4, L"lost");
    ASSERT_TRUE(inPlaceOfTheFolder.remove());
    QDir().mkpath(QString::fromStdWString(FilePath()));
    m_logger->Log(4, L"lost, too");
    ASSERT_TRUE(QDir().rmdir(QString::fromStdWString(FilePath())));
    m_logger->Log(4, L"written");
    EXPECT_THAT(Messages(), ElementsAre(L"written"));
}

TEST_F(LogFile, AFullDiskLosesWholeLinesAndLoggingGoesOnWhenThereIsRoom)
{
    struct Logger : NlOrbLogging::LoggerWin
    {
        explicit Logger(std::uint32_t& diskRoom) : room(diskRoom) {}
        std::unique_ptr<FileLowLevel> CreateFileLowLevel() override { return std::make_unique<FullDisk>(room); }
        std::uint32_t& room;
    };
    std::uint32_t room = 1; // not enough for the mark
    m_logger = std::make_unique<Logger>(room);
    Start();
    m_logger->Log(4, L"lost");
    room = 400;
    m_logger->Log(4, L"first");
    m_logger->Log(4, L"%s", std::wstring(400, L'x').c_str());
    m_logger->Log(4, L"second");
    EXPECT_THAT(Messages(), ElementsAre(L"first", L"second"));
    m_logger.reset();
}

TEST_F(LogFile, IsBroughtToTheDiskByAFlush)
{
    struct File : FileLowLevel
    {
        explicit File(int& flushed) : m_flushed(flushed) {}
        bool Flush() override
        {
            m_flushed += FileLowLevel::Flush();
            return true;
        }
        int& m_flushed;
    };
    struct Logger : NlOrbLogging::LoggerWin
    {
        explicit Logger(int& flushed) : m_flushed(flushed) {}
        std::unique_ptr<FileLowLevel> CreateFileLowLevel() override { return std::make_unique<File>(m_flushed); }
        int& m_flushed;
    };
    int flushed = 0;
    m_logger = std::make_unique<Logger>(flushed);
    Start();
    m_logger->Flush(); // there is no file yet
    m_logger->Log(4, L"a");
    m_logger->Flush();
    EXPECT_EQ(flushed, 1);
    m_logger.reset();
}

} // namespace
