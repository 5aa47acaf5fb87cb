/// A process that logs, for tests: log_writer MODE ROOT [MAXIMUM-KB ROTATION-COUNT THREADS LINES ID]
///
///     lines      logs LINES lines from each of THREADS threads, each "W: ID.thread.number end", then tells on standard
///                output how many were lost in waiting for the log's mutex, and ends
///     forever    the same without an end
///     exit       logs from the destructor of a static object and from a thread that runs on while the process ends

#include "logging/FunctionLog.h"
#include "tests/support/PlatformFakes.h"
#include "tests/support/ThreadSanitizer.h"

#include <QFile>
#include <QString>
#include <QStringList>

#include <cstdio>
#include <string>
#include <thread>

namespace
{

constexpr FunctionLog kLog(L"W");

struct Options
{
    std::wstring root;
    std::uint32_t maximumKB = 100;
    std::uint32_t rotationCount = 2;
    int threads = 1;
    int lines = 0;
    int id = 0;
};

void WriteLines(const Options& options, int thread)
{
    for (int i = 0; options.lines < 0 || i < options.lines; ++i)
        LOG(kLog, 4, L"%s: %d.%d.%d end", options.id, thread, i);
}

void RunThreads(const Options& options)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < options.threads; ++i)
        threads.emplace_back(WriteLines, options, i);
    for (std::thread& thread : threads)
        thread.join();
}

/// Made before the logger is first used, and so destroyed after it.
class Late
{
public:
    ~Late()
    {
        if (m_logs)
        {
            LOG(kLog, 2, L"%s: from a destructor");
            NlOrbLogging::Flush();
        }
    }
    void Log() { m_logs = true; }

private:
    bool m_logs = false;
};

void LogWhileTheProcessEnds()
{
    static Late s_late;
    s_late.Log();
    LOG(kLog, 2, L"%s: before");
    std::thread([] {
        for (;;)
            LOG(kLog, 2, L"%s: from a thread");
    }).detach();
    std::this_thread::yield();
}

} // namespace

int main(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments += QString::fromLocal8Bit(argv[i]);
    Options options;
    options.root = arguments.value(1).toStdWString();
    options.maximumKB = arguments.value(2, QStringLiteral("100")).toUInt();
    options.rotationCount = arguments.value(3, QStringLiteral("2")).toUInt();
    options.threads = arguments.value(4, QStringLiteral("1")).toInt();
    options.lines = arguments.value(5).toInt();
    options.id = arguments.value(6).toInt();

    // Left in place for threads that run on.
    auto& registry = *new FakeRegistry;
    auto& token = *new FakeToken;
    auto& debugOutput = *new FakeDebugOutput;
    token.administrator = true;
    constexpr const wchar_t* kKey = L"SOFTWARE\\Norlane\\ORB\\Logging";
    registry.Set(FakeRegistry::Root::Machine, kKey, L"RootPath", options.root);
    registry.Set(FakeRegistry::Root::Machine, kKey, L"LogMaxSizeKB", options.maximumKB);
    registry.Set(FakeRegistry::Root::Machine, kKey, L"LogRotateCount", options.rotationCount);

    const QString mode = arguments.value(0);
    const bool exits = mode == QStringLiteral("exit");
    NlOrbLogging::Initialize(L"NLCC", L"Veridan", 4, exits ? 0U : NlOrbLogging::BannerAtDebug);
    if (mode == QStringLiteral("forever"))
    {
        options.lines = -1;
        std::puts("writing");
        std::fflush(stdout);
    }
    if (exits)
    {
        LogWhileTheProcessEnds();
        return 7;
    }
    RunThreads(options);
    std::puts(std::to_string(debugOutput.Take().size()).c_str());
    return 0;
}
