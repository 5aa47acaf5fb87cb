import { signal } from "@preact/signals";
import { counterNames, countedDays, julianDay, lastDays, type CounterName } from "../logic/DailyCounters";
import { now } from "../model/Clock";
import { settingValue } from "../model/Settings";
import { variable } from "../model/Variables";
import { DayChart } from "../parts/DayChart";
import { Card, Page } from "../parts/Page";
import { Select } from "../parts/Select";
import { numbers, text } from "../text/Text";

const periods = ["json_7", "json_30", "json_365", "json"] as const;
type Period = (typeof periods)[number];

interface Total {
  number: number;
  description: string;
  type: "blocked" | "checked";
}

const daysOf = { json_7: 7, json_30: 30, json_365: 365 } as const;
const period = signal<Period>("json_30");
const counter = signal<CounterName>("websitesChecked");

/// The texts are JSON, or empty where nothing was counted.
function totals(): Total[] {
  const published = variable<string>(`@Veridan\\Statistics:${period.value}`).value;
  return published ? (JSON.parse(published) as Total[]) : [];
}

function Periods() {
  const t = text.value.statistics;
  return (
    <div class="segments" role="radiogroup" aria-label={t.period}>
      {periods.map((name) => (
        <label key={name}>
          <input type="radio" name="period" checked={name === period.value} onChange={() => (period.value = name)} />
          <span>{t.periods[name]}</span>
        </label>
      ))}
    </div>
  );
}

export function StatisticsPage() {
  const t = text.value;
  const counters = settingValue("user", "windows.browsing_protection.internal.statistics.daily_counters", []);
  const today = julianDay(now.value);
  const days = period.value === "json" ? countedDays(counters, today) : daysOf[period.value];
  const rows = totals();
  return (
    <Page title={t.routes.statistics} lead={t.statistics.lead}>
      <Periods />
      {rows.length === 0 && <p class="note">{t.statistics.empty}</p>}
      <ul class="totals">
        {rows.map((total) => (
          <li key={total.description} class={`card total ${total.type}`}>
            <strong>{numbers.value.format(total.number)}</strong>
            <span>{total.description}</span>
          </li>
        ))}
      </ul>
      <Card title={t.statistics.chart}>
        <Select
          class="tools"
          label={t.statistics.chartOf}
          value={counter.value}
          options={counterNames.map((name) => [name, t.statistics.counters[name]] as const)}
          onChoose={(chosen) => (counter.value = chosen)}
        />
        <DayChart title={t.statistics.counters[counter.value]} days={lastDays(counters, counter.value, today, days)} />
      </Card>
    </Page>
  );
}
