#include "fuzz/MemoryLog.h"

#include "fuzz/Target.h"
#include "tests/support/PlatformFakes.h"

#include <utility>

namespace
{

class MemoryFile : public NlOrbLogging::FileLowLevel
{
public:
    explicit MemoryFile(std::u16string& written) : m_written(written) {}

    bool Open(const std::wstring&, const wchar_t*) override { return m_open = true; }
    void Close() override { m_open = false; }
    bool IsOpen() override { return m_open; }
    bool SeekToEnd() override { return true; }
    bool Flush() override { return true; }

    bool Write(const void* data, std::uint32_t bytes) override
    {
        Require(bytes % sizeof(char16_t) == 0, "a log line is UTF-16");
        m_written.append(static_cast<const char16_t*>(data), bytes / sizeof(char16_t));
        return true;
    }

private:
    std::u16string& m_written;
    bool m_open = false;
};

class NoFiles : public NlOrbLogging::FileUtils
{
public:
    bool FileExists(const std::wstring&) override { return false; }
    bool FileDelete(const std::wstring&) override { return true; }
    bool FileRename(const std::wstring&, const std::wstring&) override { return true; }
    bool CreateDirectoryTree(const std::wstring&, const wchar_t*) override { return true; }
    bool DirectoryExists(const std::wstring&) override { return true; }
};

} // namespace

MemoryLog& MemoryLog::Get()
{
    static MemoryLog log;
    return log;
}

MemoryLog::MemoryLog()
{
    FakeRegistry registry;
    registry.Set(FakeRegistry::Root::User, L"SOFTWARE\\Norlane\\ORB\\Logging", L"RootPath", L"fuzz");
    LoggerWin::Initialize(L"NLCC", L"Fuzz", NlOrbLogging::Verbose, NlOrbLogging::PerUserLocation);
    Require(!Take().empty(), "a log begins with its banner");
}

MemoryLog::~MemoryLog()
{
    LoggerWin::Shutdown();
}

std::u16string MemoryLog::Take()
{
    return std::exchange(m_written, {});
}

std::unique_ptr<NlOrbLogging::FileLowLevel> MemoryLog::CreateFileLowLevel()
{
    return std::make_unique<MemoryFile>(m_written);
}

std::unique_ptr<NlOrbLogging::FileUtils> MemoryLog::CreateFileUtils()
{
    return std::make_unique<NoFiles>();
}
