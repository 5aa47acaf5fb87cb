#include "settings/binding/ScopedSettings.h"
#include "settings/model/VdnSettings.h"
#include "util/ModuleHandler.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QTemporaryDir>

#include <cstdio>

namespace
{

using Settings::Site;
using Scope = StrataSettings::ScopedSettings<VdnSettings>;

constexpr const char* kUser = "S-1-5-21-1-2-3-1001";

std::string Address(std::int64_t number)
{
    return "site-" + std::to_string(10'000'000 + number) + ".example/path";
}

/// As many sites as the run asks for; those with an odd number are not among them.
std::set<Site> SitesOf(const benchmark::State& state)
{
    std::set<Site> sites;
    for (std::int64_t i = 0; i < state.range(0); ++i)
        sites.emplace_hint(sites.end(), Address(2 * i), i % 2 == 0, "label");
    return sites;
}

/// The numbers of absent sites that lie all over the list.
std::int64_t NextAbsent(std::int64_t last, const benchmark::State& state)
{
    return (last + 7918) % (2 * state.range(0)) | 1;
}

void AddAndRemoveSite(benchmark::State& state)
{
    VdnSettings tree;
    tree.sites.list.Set(SitesOf(state));
    std::int64_t number = 1;
    for (auto _ : state)
    {
        number = NextAbsent(number, state);
        tree.sites.Add(Site(Address(number), true, std::string()));
        tree.sites.Remove(Address(number));
    }
    state.SetComplexityN(state.range(0));
}

void FindSite(benchmark::State& state)
{
    VdnSettings tree;
    tree.sites.list.Set(SitesOf(state));
    std::int64_t number = 1;
    for (auto _ : state)
    {
        number = NextAbsent(number, state);
        const Site key = Site::Key(Address(number - 1));
        benchmark::DoNotOptimize(tree.sites.list.Inspect([&key](const auto& sites) { return sites.count(key); }));
    }
    state.SetComplexityN(state.range(0));
}

void SaveSites(benchmark::State& state)
{
    Scope scope(kUser, L"safe", L"bench", true);
    scope.Settings().sites.list.Set(SitesOf(state));
    for (auto _ : state)
    {
        scope.Settings().sites.list.MarkChanged();
        if (!scope.Save())
            state.SkipWithError("not saved");
    }
    state.SetComplexityN(state.range(0));
}

void LoadSites(benchmark::State& state)
{
    Scope scope(kUser, L"safe", L"bench", true);
    auto& sites = scope.Settings().sites;
    sites.list.Set(SitesOf(state));
    if (!scope.Save())
        state.SkipWithError("not saved");
    for (auto _ : state)
        sites.list.Load();
    state.SetComplexityN(state.range(0));
}

void LoadTree(benchmark::State& state)
{
    Scope scope(kUser, L"safe", L"bench", false);
    for (auto _ : state)
        scope.Load();
}

/// Every other hour is forbidden: no week has more ranges.
void WeekToTextAndBack(benchmark::State& state)
{
    VdnSettings tree;
    std::string week;
    for (int hour = 0; hour < 168; ++hour)
        week += hour % 2 == 0 ? '0' : '1';
    for (auto _ : state)
    {
        tree.time.curfews.FromLegacyUiString(week);
        benchmark::DoNotOptimize(tree.time.curfews.ToLegacyUiString());
    }
}

void StatisticsOfYear(benchmark::State& state)
{
    VdnSettings tree;
    std::set<Settings::DailyCounter> days;
    for (int day = 0; day < 366; ++day)
        days.emplace(2'460'000 + day);
    tree.internal.statistics.dailyCounters.Set(days);
    std::uint32_t totals[5] = {};
    for (auto _ : state)
        tree.internal.statistics.GetStatistics(366, totals[0], totals[1], totals[2], totals[3], totals[4], 2'460'365);
    benchmark::DoNotOptimize(totals);
}

// LoadTree comes first, while the store is empty.
BENCHMARK(LoadTree)->Unit(benchmark::kMicrosecond);
BENCHMARK(WeekToTextAndBack)->Unit(benchmark::kMicrosecond);
BENCHMARK(StatisticsOfYear)->Unit(benchmark::kMicrosecond);
BENCHMARK(AddAndRemoveSite)->RangeMultiplier(10)->Range(100, 100'000)->Complexity(benchmark::oLogN);
BENCHMARK(FindSite)->RangeMultiplier(10)->Range(100, 100'000)->Complexity(benchmark::oLogN);
BENCHMARK(SaveSites)
    ->RangeMultiplier(10)
    ->Range(100, 100'000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Complexity(benchmark::oN);
BENCHMARK(LoadSites)
    ->RangeMultiplier(10)
    ->Range(100, 100'000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Complexity(benchmark::oN);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    qputenv("ORB_STRATA_STORE", folder.filePath(QStringLiteral("store.db")).toUtf8());
    ModuleHandler modules;
    if (!modules.LoadDll())
    {
        std::fputs("The suite's libraries are missing beside this program.\n", stderr);
        return 1;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
