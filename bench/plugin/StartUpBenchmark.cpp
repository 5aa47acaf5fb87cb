#include "bench/plugin/LoadedPlugIn.h"
#include "bench/plugin/Roles.h"
#include "bench/settings/SomeSites.h"
#include "bench/support/InTurns.h"
#include "bench/support/Memory.h"
#include "bench/support/OwnStore.h"
#include "settings/binding/ScopedSettings.h"
#include "settings/model/VdnSettings.h"

#include <QLibrary>
#include <QProcess>

#include <chrono>
#include <cstdio>
#include <optional>

// Each sample is a process of its own: a library's second start is cheaper than its first one.

namespace
{

constexpr const char* kSystem = "S-1-5-18";
constexpr const char* kCaller = "";
constexpr const char* kBare = "bare";
constexpr const char* kLibraries = "libraries";
constexpr const char* kPlugIn = "plug-in";
constexpr const char* kBareIs = "store library loaded, the same keys of both scopes read";
constexpr const char* kLibrariesIs = "the same with the plug-in's and the suite's libraries loaded";

struct Sample
{
    double seconds = 0;
    double bytes = 0;
};

Sample TakeSample(const char* what)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--sample"), QLatin1String(what)});
    process.waitForFinished(-1);
    const QList<QByteArray> figures = process.readAllStandardOutput().split(' ');
    if (figures.size() != 2)
        qFatal("A sample was not taken.");
    return {figures[0].toDouble(), figures[1].toDouble()};
}

void StartUp(benchmark::State& state, const char* baseline, const char* baselineIs)
{
    const OwnStore store;
    store.Seed();
    InTurns turns(state, baselineIs, {1.5});
    for (auto _ : state)
    {
        turns.AddBaseline(TakeSample(baseline).seconds);
        turns.AddSubject(TakeSample(kPlugIn).seconds);
    }
}

void PutSites(std::int64_t count)
{
    const StoreLibrary library;
    StrataSettings::ScopedSettings<VdnSettings> scope(kCaller, L"safe", L"bench", true);
    scope.Settings().internal.sites.list.Set(SomeSites(count));
    scope.Save();
}

void AddedMemory(benchmark::State& state)
{
    const OwnStore store;
    store.Seed();
    if (state.range(0) != 0)
        PutSites(state.range(0));
    InTurns turns(state, kBareIs);
    turns.CountBytes();
    for (auto _ : state)
    {
        turns.AddBaseline(TakeSample(kBare).bytes);
        turns.AddSubject(TakeSample(kPlugIn).bytes);
    }
}

/// What stays alive while the memory is looked at.
struct BareReading
{
    StoreLibrary library;
    BareScope system{kSystem};
    BareScope user{kCaller};

    explicit BareReading(const std::vector<BareSetting>& settings)
    {
        system.Read(settings);
        user.Read(settings);
    }
};

void LoadLibraries()
{
    for (const char* const name : {"Veridan", "nl_orb_datapipeline_api_32", "nl_flyer_api_32"})
        QLibrary(QCoreApplication::applicationDirPath() + QLatin1Char('/') + QLatin1String(name)).load();
}

BENCHMARK_CAPTURE(StartUp, , kBare, kBareIs)
    ->Name("start-up: load, Initialize, ready")
    ->Iterations(60)
    ->UseManualTime();
BENCHMARK_CAPTURE(StartUp, , kLibraries, kLibrariesIs)
    ->Name("start-up, against loading the same libraries")
    ->Iterations(60)
    ->UseManualTime();
BENCHMARK(AddedMemory)->Name("memory added, websites:")->Arg(0)->Arg(100'000)->Iterations(5)->UseManualTime();

} // namespace

int RunSample(const QString& what)
{
    const auto settings = SeededSettings();
    std::optional<LoadedPlugIn> plugIn;
    std::optional<BareReading> bare;

    const double bytes = ResidentBytes();
    const auto start = std::chrono::steady_clock::now();
    if (what == QLatin1String(kLibraries))
        LoadLibraries();
    if (what == QLatin1String(kPlugIn))
        plugIn.emplace();
    else
        bare.emplace(settings);
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;

    if (plugIn)
        plugIn->host.Fire("@Veridan\\Settings\\Triggers:load_data");
    std::printf("%.9f %.0f", time.count(), ResidentBytes() - bytes);
    return 0;
}
