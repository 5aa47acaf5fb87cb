#include "tests/logging/LogFixture.h"

#include "logging/FileLowLevel.h"

#include <QDir>
#include <QFile>

#include <sys/resource.h>

#include <csignal>
#include <string>

namespace
{

/// No file of this process grows beyond so many bytes, as long as this lives: a write that would is cut there.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    rlimit m_before{};
    void (*const m_handler)(int);
};

class PartialWrite : public LogFixture
{};

TEST_F(PartialWrite, IsTakenBack)
{
    QDir().mkpath(QString::fromStdWString(Folder()));
    NlOrbLogging::FileLowLevel file;
    ASSERT_TRUE(file.Open(FilePath(), nullptr));
    const std::string line(100, 'x');
    const auto write = [&] { return file.SeekToEnd() && file.Write(line.data(), 100); };
    ASSERT_TRUE(write());
    {
        const FileSizeLimit limit(150);
        EXPECT_FALSE(write());
    }
    EXPECT_EQ(102, QFile(QString::fromStdWString(FilePath())).size());
    EXPECT_EQ(102U, file.GetSize());
    EXPECT_TRUE(write());
    EXPECT_EQ(202U, file.GetSize());
}

} // namespace
