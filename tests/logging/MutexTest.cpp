#include "tests/logging/LogFixture.h"

#include "platform/NamedMutex.h"
#include "platform/Path.h"

#include <QFile>

#include <algorithm>
#include <chrono>
#include <thread>

namespace
{

using Platform::NamedMutex;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class LogMutex : public LogFixture
{
protected:
    std::wstring MutexName(const std::wstring& space) const
    {
        std::wstring path = FilePath();
        std::replace(path.begin(), path.end(), Platform::kPathSeparator, L'_');
        return space + L"\\NlOrbLogging_" + path;
    }

    void Start() { Initialize(NlOrbLogging::BannerAtDebug); }
};

TEST_F(LogMutex, AHeldOneCostsALineAfterHalfASecond)
{
    NamedMutex other;
    ASSERT_EQ(other.Create(MutexName(L"Global"), nullptr), 0U);
    Start();
    ASSERT_EQ(other.Lock(0), NamedMutex::Wait::Acquired);

    std::chrono::milliseconds waited{0};
    std::thread([&] {
        const auto begin = std::chrono::steady_clock::now();
        m_logger->Log(4, L"lost");
        waited = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - begin);
        m_logger->Flush(); // gives up in silence
    }).join();
    EXPECT_GE(waited.count(), 490);
    EXPECT_LT(waited.count(), 30'000); // a busy machine
    EXPECT_THAT(m_debugOutput.Take(),
                ElementsAre(L"nl_orb_log!FileAccess::Write(): Failed to acquire file mutex, error=258\n"));

    other.Unlock();
    m_logger->Log(4, L"written");
    EXPECT_THAT(Messages(), ElementsAre(L"written"));
}

TEST_F(LogMutex, AnAbandonedOneIsAsGoodAsAFreeOneThoughItsHolderWasRotating)
{
    NamedMutex other;
    ASSERT_EQ(other.Create(MutexName(L"Global"), nullptr), 0U);
    Start();
    m_logger->Log(4, L"before");
    std::thread([&] {
        ASSERT_EQ(other.Lock(0), NamedMutex::Wait::Acquired);
        ASSERT_TRUE(
            QFile::rename(QString::fromStdWString(FilePath()), QString::fromStdWString(FilePath(L"Veridan.1.log"))));
    }).join();

    m_logger->Log(4, L"written");
    EXPECT_THAT(Messages(), ElementsAre(L"written"));
    EXPECT_THAT(m_debugOutput.Take(), IsEmpty());
}

TEST_F(LogMutex, IsLocalToTheSessionAtLowIntegrity)
{
    m_token.lowIntegrity = true;
    Start();
    m_logger->Log(4, L"x");
    NamedMutex probe;
    EXPECT_EQ(probe.Open(MutexName(L"Local")), 0U);
    EXPECT_NE(probe.Open(MutexName(L"Global")), 0U);
}

} // namespace
