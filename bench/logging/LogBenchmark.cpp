#include "bench/logging/Baseline.h"
#include "bench/support/InTurns.h"
#include "logging/FunctionLog.h"
#include "tests/support/PlatformFakes.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace
{

constexpr FunctionLog kLog(L"StrataSettings::ScopedSettings::Load");

/// Has the log written to this folder, into files of a size.
class LogSetup
{
public:
    LogSetup(const QString& folder, std::uint32_t maximumKB)
    {
        constexpr auto kMachine = FakeRegistry::Root::Machine;
        constexpr const wchar_t* kKey = L"SOFTWARE\\Norlane\\ORB\\Logging";
        m_registry.Set(kMachine, kKey, L"RootPath", QDir::toNativeSeparators(folder).toStdWString());
        m_registry.Set(kMachine, kKey, L"LogMaxSizeKB", maximumKB);
        NlOrbLogging::Initialize(L"NLCC", L"Veridan", 4, 0);
    }
    ~LogSetup() { NlOrbLogging::GetLogger().Shutdown(); }
    LogSetup(const LogSetup&) = delete;
    LogSetup& operator=(const LogSetup&) = delete;

private:
    FakeRegistry m_registry;
    FakeToken m_token;
};

constexpr std::uint32_t kNoRotation = 4000000;
constexpr std::uint32_t kRotation = 100;
constexpr const char* kBaselineIs = "lock, seek to the end, one write, unlock";

std::wstring BaselinePath(const QString& folder)
{
    return QDir(folder).filePath(QStringLiteral("baseline.log")).toStdWString();
}

void WriteLines(int count)
{
    for (int number = 0; number < count; ++number)
        LOG(kLog, 4, L"%s: Scope %hs, %d keys", "S-1-5-18", 100000 + number % 1000);
}

/// As many lines of as many bytes as WriteLines() writes.
void WriteBaselineLines(Baseline& baseline, int count)
{
    static const std::string s_line(200, 'x');
    for (int number = 0; number < count; ++number)
        baseline.Write(s_line);
}

void FilteredCall(benchmark::State& state)
{
    constexpr int kCalls = 100'000;
    const QTemporaryDir folder;
    const LogSetup log(folder.path(), kNoRotation);
    InTurns turns(state, "");
    turns.SetUnits(kCalls, 1);
    for (auto _ : state)
    {
        turns.Alone([] {
            for (int number = 0; number < kCalls; ++number)
            {
                LOG(kLog, 5, L"%s: Scope %hs, %d keys", "S-1-5-18", number);
                benchmark::ClobberMemory();
            }
        });
    }
}

template <class Run>
void InThreads(std::int64_t count, const Run& run)
{
    std::vector<std::thread> threads;
    for (std::int64_t i = 1; i < count; ++i)
        threads.emplace_back(run);
    run();
    for (std::thread& thread : threads)
        thread.join();
}

void LinesOfThreads(benchmark::State& state, std::uint32_t maximumKB)
{
    constexpr int kLines = 2000;
    const std::int64_t threads = state.range(0);
    const QTemporaryDir folder;
    const LogSetup log(folder.path(), maximumKB);
    Baseline baseline(BaselinePath(folder.path()));
    InTurns turns(state, kBaselineIs);
    turns.SetUnits(threads * kLines, threads * kLines);
    for (auto _ : state)
    {
        turns.Both(
            [&] {
                InThreads(
                    threads, [] { WriteLines(kLines); });
            },
            [&] {
                InThreads(
                    threads, [&baseline] { WriteBaselineLines(baseline, kLines); });
            });
    }
}

constexpr std::int64_t kLinesOfProcess = 50'000;
constexpr int kProcesses = 4;

/// This program again, as one of several processes: "--lines FOLDER MAXIMUM-KB" or "--baseline FOLDER".
int RunAsChild(const QStringList& arguments)
{
    if (arguments[1] == QStringLiteral("--baseline"))
    {
        Baseline baseline(BaselinePath(arguments[2]));
        WriteBaselineLines(baseline, kLinesOfProcess);
        return 0;
    }
    const LogSetup setup(arguments[2], arguments[3].toUInt());
    WriteLines(kLinesOfProcess);
    return 0;
}

void RunProcesses(const QStringList& arguments)
{
    std::vector<std::unique_ptr<QProcess>> processes;
    for (int i = 0; i < kProcesses; ++i)
    {
        processes.push_back(std::make_unique<QProcess>());
        processes.back()->start(QCoreApplication::applicationFilePath(), arguments);
    }
    for (const auto& process : processes)
        process->waitForFinished(-1);
}

/// With the time that the processes need to start and to end.
void LinesOfProcesses(benchmark::State& state, std::uint32_t maximumKB)
{
    const QTemporaryDir folder;
    const QStringList line{QStringLiteral("--lines"), folder.path(), QString::number(maximumKB)};
    const QStringList baselineLine{QStringLiteral("--baseline"), folder.path()};
    InTurns turns(state, kBaselineIs);
    turns.SetUnits(kProcesses * kLinesOfProcess, kProcesses * kLinesOfProcess);
    for (auto _ : state)
        turns.Both([&] { RunProcesses(line); }, [&] { RunProcesses(baselineLine); });
}

BENCHMARK(FilteredCall)->Name("log: a filtered call")->Iterations(50)->UseManualTime();
BENCHMARK_CAPTURE(LinesOfThreads, , kNoRotation)
    ->Name("log: a line, threads")
    ->Arg(1)
    ->Arg(4)
    ->Iterations(100)
    ->UseManualTime();
BENCHMARK_CAPTURE(LinesOfThreads, , kRotation)
    ->Name("log: a line, files of 100 KiB, threads")
    ->Arg(1)
    ->Arg(4)
    ->Iterations(100)
    ->UseManualTime();
BENCHMARK_CAPTURE(LinesOfProcesses, , kNoRotation)->Name("log: a line, four processes")->Iterations(5)->UseManualTime();
BENCHMARK_CAPTURE(LinesOfProcesses, , kRotation)
    ->Name("log: a line, files of 100 KiB, four processes")
    ->Iterations(5)
    ->UseManualTime();

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() > 2 && !arguments[1].startsWith(QStringLiteral("--benchmark")))
        return RunAsChild(arguments);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
