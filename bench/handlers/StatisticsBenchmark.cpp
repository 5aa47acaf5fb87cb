#include "bench/settings/TenYears.h"
#include "bench/support/InTurns.h"
#include "bench/support/OwnStore.h"
#include "bench/support/PageHost.h"
#include "handlers/StatisticsHandler.h"

#include <QDate>

namespace
{

/// The JSON texts of four periods.
void PublishTenYears(benchmark::State& state)
{
    const OwnStore store;
    PageHost host;
    const auto system = std::make_shared<SystemSettings>(nullptr, kSettingsClientId);
    const auto user = std::make_shared<UserSettings>("S-1-5-21-1", system, false);
    const auto days = TenYearsUntil(QDate::currentDate().toJulianDay());
    user->WritableSettings().internal.statistics.dailyCounters.Set(days);
    StatisticsHandler handler(user);
    handler.Initialize(&host);
    InTurns turns(state, "the days added up once for each of the four periods");
    for (auto _ : state)
    {
        turns.Both([&handler] { handler.UpdateStatistics(); },
                   [&days] {
                       for (int period = 0; period < 4; ++period)
                           benchmark::DoNotOptimize(SumOf(days));
                   });
    }
}

BENCHMARK(PublishTenYears)->Name("statistics: publish ten years")->Iterations(200)->UseManualTime();

} // namespace
