#include "bench/settings/TenYears.h"
#include "bench/support/InTurns.h"
#include "bench/support/OwnStore.h"
#include "settings/binding/ScopedSettings.h"
#include "settings/model/VdnSettings.h"

namespace
{

using Scope = StrataSettings::ScopedSettings<VdnSettings>;

constexpr std::int64_t kLastDay = 2'460'000;

void ReadDaysBare(OrbStrataHandle handle, const wchar_t* key)
{
    OrbStrataResult result = ORB_STRATA_SUCCESS;
    OrbStrataObject* const array = OrbStrata_GetObject(handle, key, &result);
    const OrbStrataIterator end = OrbStrata_ArrayEnd(array);
    for (OrbStrataIterator at = OrbStrata_ArrayBegin(array); at != end; ++at)
        for (const wchar_t* const field :
             {L"julianDate", L"websitesChecked", L"bankingSessions", L"harmfulBlocks", L"wtsScans", L"wtsBlocks"})
            OrbStrata_ObjectGetInt64(OrbStrata_IteratorGetAssociatedObject(at), field, 0, &result);
    OrbStrata_DeleteObject(array);
}

void LoadTenYears(benchmark::State& state)
{
    const OwnStore store;
    Scope scope("S-1-5-21-1", L"safe", L"bench", true);
    auto& days = scope.Settings().internal.statistics.dailyCounters;
    days.Set(TenYearsUntil(kLastDay));
    scope.Save();
    const BareScope bare("S-1-5-21-1");
    InTurns turns(state, "every field read through the store's interface", {1.5});
    for (auto _ : state)
        turns.Both([&] { days.Load(); }, [&] { ReadDaysBare(bare.Handle(), days.GetKey().c_str()); });
}

void CountTenYears(benchmark::State& state)
{
    VdnSettings tree;
    const auto days = TenYearsUntil(kLastDay);
    tree.internal.statistics.dailyCounters.Set(days);
    InTurns turns(state, "the days added up", {1.5});
    for (auto _ : state)
    {
        std::uint32_t totals[5] = {};
        turns.Both(
            [&] {
                tree.internal.statistics.GetStatistics(kTenYears, totals[0], totals[1], totals[2], totals[3], totals[4],
                                                       kLastDay);
                benchmark::DoNotOptimize(totals);
            },
            [&] { benchmark::DoNotOptimize(SumOf(days)); });
    }
}

BENCHMARK(LoadTenYears)->Name("statistics: load ten years")->Iterations(50)->UseManualTime();
BENCHMARK(CountTenYears)->Name("statistics: count ten years")->Iterations(200)->UseManualTime();

} // namespace
