#include "bench/logging/Floor.h"
#include "logging/FunctionLog.h"
#include "tests/support/PlatformFakes.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <memory>
#include <string>
#include <vector>

namespace
{

constexpr FunctionLog g_log(L"StrataSettings::ScopedSettings::Load");

/// Has the log written to this folder, into files of a size.
class LogSetup
{
public:
    LogSetup(const QString& folder, std::uint32_t maximumKB)
    {
        constexpr auto machine = FakeRegistry::Root::Machine;
        constexpr const wchar_t* key = L"SOFTWARE\\Norlane\\ORB\\Logging";
        m_registry.Set(machine, key, L"RootPath", QDir::toNativeSeparators(folder).toStdWString());
        m_registry.Set(machine, key, L"LogMaxSizeKB", maximumKB);
        NlOrbLogging::Initialize(L"NLCC", L"Veridan", 4, 0);
    }
    ~LogSetup() { NlOrbLogging::GetLogger().Shutdown(); }
    LogSetup(const LogSetup&) = delete;
    LogSetup& operator=(const LogSetup&) = delete;

private:
    FakeRegistry m_registry;
    FakeToken m_token;
};

constexpr std::uint32_t NoRotation = 4000000;
constexpr std::uint32_t Rotation = 100;

/// The bytes of a line as WriteOne() writes it.
const std::string& LineOfFloor()
{
    static const std::string s_line(2 * 100, 'x');
    return s_line;
}

void WriteOne(int number)
{
    LOG(g_log, 4, L"%s: Scope %hs, %d keys", "S-1-5-18", 100000 + number % 1000);
}

/// What the threads of a benchmark share.
struct Shared
{
    QTemporaryDir folder;
    std::unique_ptr<LogSetup> log;
    std::unique_ptr<Floor> floor;

    std::wstring FloorPath() const { return folder.filePath(QStringLiteral("floor.log")).toStdWString(); }
};

std::unique_ptr<Shared> g_shared;

void StartLog(std::uint32_t maximumKB)
{
    g_shared = std::make_unique<Shared>();
    g_shared->log = std::make_unique<LogSetup>(g_shared->folder.path(), maximumKB);
}

void FilteredCall(benchmark::State& state)
{
    if (state.thread_index() == 0)
    {
        StartLog(NoRotation);
    }
    int number = 0;
    for (auto _ : state)
    {
        LOG(g_log, 5, L"%s: Scope %hs, %d keys", "S-1-5-18", ++number);
        benchmark::DoNotOptimize(number);
    }
    if (state.thread_index() == 0)
    {
        g_shared.reset();
    }
}

void FloorLine(benchmark::State& state)
{
    if (state.thread_index() == 0)
    {
        g_shared = std::make_unique<Shared>();
        g_shared->floor = std::make_unique<Floor>(g_shared->FloorPath());
    }
    for (auto _ : state)
    {
        g_shared->floor->Write(LineOfFloor());
    }
    if (state.thread_index() == 0)
    {
        g_shared.reset();
    }
}

void Line(benchmark::State& state)
{
    if (state.thread_index() == 0)
    {
        StartLog(static_cast<std::uint32_t>(state.range(0)));
    }
    int number = 0;
    for (auto _ : state)
    {
        WriteOne(++number);
    }
    if (state.thread_index() == 0)
    {
        g_shared.reset();
    }
}

constexpr int LinesOfProcess = 50000;
constexpr int Processes = 4;

/// This program again, as one of several processes: "--lines FOLDER MAXIMUM-KB" or "--floor FOLDER".
int RunAsChild(const QStringList& arguments)
{
    const QDir folder(arguments[2]);
    if (arguments[1] == QStringLiteral("--floor"))
    {
        Floor floor(folder.filePath(QStringLiteral("floor.log")).toStdWString());
        for (int i = 0; i < LinesOfProcess; ++i)
        {
            floor.Write(LineOfFloor());
        }
        return 0;
    }
    const LogSetup setup(folder.path(), arguments[3].toUInt());
    for (int i = 0; i < LinesOfProcess; ++i)
    {
        WriteOne(i);
    }
    return 0;
}

/// Time of a line when several processes write to one file at once, with the time they need to start and end.
void RunProcesses(benchmark::State& state, const QStringList& arguments)
{
    for (auto _ : state)
    {
        std::vector<std::unique_ptr<QProcess>> processes;
        for (int i = 0; i < Processes; ++i)
        {
            processes.push_back(std::make_unique<QProcess>());
            processes.back()->start(QCoreApplication::applicationFilePath(), arguments);
        }
        for (const auto& process : processes)
        {
            process->waitForFinished(-1);
        }
    }
    state.counters["s_per_line"] = benchmark::Counter(
        Processes * LinesOfProcess, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void FloorOfProcesses(benchmark::State& state)
{
    const QTemporaryDir folder;
    RunProcesses(state, {QStringLiteral("--floor"), folder.path()});
}

void LinesOfProcesses(benchmark::State& state)
{
    const QTemporaryDir folder;
    RunProcesses(state, {QStringLiteral("--lines"), folder.path(), QString::number(state.range(0))});
}

BENCHMARK(FilteredCall);
BENCHMARK(FloorLine)->UseRealTime();
BENCHMARK(Line)->Arg(NoRotation)->Arg(Rotation)->UseRealTime();
BENCHMARK(FloorLine)->Threads(4)->UseRealTime();
BENCHMARK(Line)->Arg(NoRotation)->Arg(Rotation)->Threads(4)->UseRealTime();
BENCHMARK(FloorOfProcesses)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(LinesOfProcesses)->Arg(NoRotation)->Arg(Rotation)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() > 2 && !arguments[1].startsWith(QStringLiteral("--benchmark")))
    {
        return RunAsChild(arguments);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
