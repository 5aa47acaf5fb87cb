#include "bench/logging/Floor.h"
#include "logging/FunctionLog.h"
#include "platform/Text.h"

#include <benchmark/benchmark.h>

#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace
{

constexpr FunctionLog g_log(L"StrataSettings::ScopedSettings::Load");

/// A log in a fresh folder; as large as it gets, unless a run asks for rotation.
class Folder
{
public:
    explicit Folder(unsigned maximumKB)
    {
        std::string path = std::filesystem::temp_directory_path() / "veridan-bench-XXXXXX";
        m_path = ::mkdtemp(path.data());
        ::setenv("VERIDAN_COMMON_APPDATA", m_path.c_str(), 1);
        ::setenv("VERIDAN_LOCAL_APPDATA", m_path.c_str(), 1);
        ::setenv("VERIDAN_REGISTRY_DIR", m_path.c_str(), 1);
        const std::string settings = "[SOFTWARE/Norlane/ORB/Logging]\nLogMaxSizeKB=" + std::to_string(maximumKB) + "\n";
        std::FILE* const file = std::fopen((m_path + "/machine.ini").c_str(), "w");
        std::fputs(settings.c_str(), file);
        std::fclose(file);
    }
    ~Folder() { std::filesystem::remove_all(m_path); }

    std::wstring File(const wchar_t* name) const { return Platform::FromUtf8(m_path) + L"/" + name; }

private:
    std::string m_path;
};

constexpr unsigned NoRotation = 4000000;
constexpr unsigned Rotation = 100;

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

std::unique_ptr<Folder> g_folder;
std::unique_ptr<Floor> g_floor;

void StartLog(unsigned maximumKB)
{
    g_folder = std::make_unique<Folder>(maximumKB);
    NlOrbLogging::Initialize(L"NLCC", L"Veridan", 4, 0);
}

void StopLog()
{
    NlOrbLogging::GetLogger().Shutdown();
    g_folder.reset();
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
        StopLog();
    }
}

void FloorLine(benchmark::State& state)
{
    if (state.thread_index() == 0)
    {
        g_folder = std::make_unique<Folder>(NoRotation);
        g_floor = std::make_unique<Floor>(g_folder->File(L"floor.log"));
    }
    for (auto _ : state)
    {
        g_floor->Write(LineOfFloor());
    }
    if (state.thread_index() == 0)
    {
        g_floor.reset();
        g_folder.reset();
    }
}

void Line(benchmark::State& state)
{
    if (state.thread_index() == 0)
    {
        StartLog(static_cast<unsigned>(state.range(0)));
    }
    int number = 0;
    for (auto _ : state)
    {
        WriteOne(++number);
    }
    if (state.thread_index() == 0)
    {
        StopLog();
    }
}

constexpr int LinesOfProcess = 50000;
constexpr int Processes = 4;

/// Time of a line when several processes write to one file at once, with the time they need to start and end.
template <class Work>
void RunProcesses(benchmark::State& state, Work work)
{
    for (auto _ : state)
    {
        std::vector<pid_t> children;
        for (int i = 0; i < Processes; ++i)
        {
            children.push_back(::fork());
            if (children.back() == 0)
            {
                work();
                ::_exit(0);
            }
        }
        for (const pid_t child : children)
        {
            ::waitpid(child, nullptr, 0);
        }
    }
    state.counters["ns_per_line"] = benchmark::Counter(
        1e-9 * Processes * LinesOfProcess, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void FloorOfProcesses(benchmark::State& state)
{
    const Folder folder(NoRotation);
    RunProcesses(state, [&] {
        Floor floor(folder.File(L"floor.log"));
        for (int i = 0; i < LinesOfProcess; ++i)
        {
            floor.Write(LineOfFloor());
        }
    });
}

void LinesOfProcesses(benchmark::State& state)
{
    const Folder folder(static_cast<unsigned>(state.range(0)));
    RunProcesses(state, [] {
        NlOrbLogging::Initialize(L"NLCC", L"Veridan", 4, 0);
        for (int i = 0; i < LinesOfProcess; ++i)
        {
            WriteOne(i);
        }
        NlOrbLogging::GetLogger().Shutdown();
    });
}

BENCHMARK(FilteredCall);
BENCHMARK(FloorLine)->UseRealTime();
BENCHMARK(Line)->Arg(NoRotation)->Arg(Rotation)->UseRealTime();
BENCHMARK(FloorLine)->Threads(4)->UseRealTime();
BENCHMARK(Line)->Arg(NoRotation)->Arg(Rotation)->Threads(4)->UseRealTime();
BENCHMARK(FloorOfProcesses)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(LinesOfProcesses)->Arg(NoRotation)->Arg(Rotation)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
