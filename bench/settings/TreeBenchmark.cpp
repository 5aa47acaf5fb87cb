#include "bench/settings/SomeSites.h"
#include "bench/support/InTurns.h"
#include "bench/support/OwnStore.h"
#include "settings/binding/ScopedSettings.h"
#include "settings/model/VdnSettings.h"

namespace
{

using Scope = StrataSettings::ScopedSettings<VdnSettings>;

void OpenAndLoadTree(benchmark::State& state)
{
    const OwnStore store;
    store.Seed();
    const auto settings = SeededSettings();
    InTurns turns(state, "the same keys read through the store's interface", {1.5});
    for (auto _ : state)
    {
        turns.Both([] { Scope("S-1-5-18", L"safe", L"bench", false).Load(); },
                   [&] { BareScope("S-1-5-18").Read(settings); });
    }
}

void PutSites(const char* sid, std::int64_t count)
{
    Scope scope(sid, L"safe", L"bench", true);
    scope.Settings().sites.list.Set(SomeSites(count));
    scope.Save();
}

/// Another user's websites are in the store, which must not matter.
void SaveOneKey(benchmark::State& state)
{
    const OwnStore store;
    PutSites("S-1-5-21-3", state.range(0));
    Scope scope("S-1-5-21-1", L"safe", L"bench", true);
    const BareScope bare("S-1-5-21-2", true);
    auto& enabled = scope.Settings().time.enabled;
    bool on = false;
    InTurns turns(state, "one bare write", {1.5});
    for (auto _ : state)
    {
        on = !on;
        enabled.Set(on);
        turns.Both([&] { scope.Save(); }, [&] { OrbStrata_SetBool(bare.Handle(), enabled.GetKey().c_str(), on); });
    }
}

/// Every other hour is forbidden: no week has more ranges.
void WeekToTextAndBack(benchmark::State& state)
{
    VdnSettings tree;
    std::string week;
    for (int hour = 0; hour < 168; ++hour)
        week += hour % 2 == 0 ? '0' : '1';
    InTurns turns(state, "");
    for (auto _ : state)
    {
        turns.Alone([&] {
            tree.time.curfews.FromLegacyUiString(week);
            benchmark::DoNotOptimize(tree.time.curfews.ToLegacyUiString());
        });
    }
}

BENCHMARK(OpenAndLoadTree)->Name("open a scope and load the tree")->Iterations(300)->UseManualTime();
BENCHMARK(SaveOneKey)
    ->Name("save one changed key, websites beside it:")
    ->Arg(0)
    ->Arg(100'000)
    ->Iterations(400)
    ->UseManualTime();
BENCHMARK(WeekToTextAndBack)->Name("a week of curfews to text and back")->Iterations(1000)->UseManualTime();

} // namespace
