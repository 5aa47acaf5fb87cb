import { computed } from "@preact/signals";
import type { Json } from "../connection/Protocol";
import { outlook, type DayFacts, type ModeUse, type Range } from "../logic/DayBand";
import { minuteOfDay, now } from "./Clock";
import { settingValue } from "./Settings";

const weekDays = ["sunday", "monday", "tuesday", "wednesday", "thursday", "friday", "saturday"] as const;
const secondsInDay = 86_400;
/// The store counts time in ticks of 100 ns since 1970.
const ticksInMs = 10_000;
const usage = "windows.browsing_protection.internal.time_limit_data.";

const user = <Value extends Json>(key: string, otherwise: Value) => settingValue("user", key, otherwise);

function curfews(day: number): Range[] {
  const ranges = user<Json[]>(`common.time.curfew.${weekDays[day % 7]!}.ranges`, []);
  return ranges.flatMap((range) =>
    range !== null && typeof range === "object" && !Array.isArray(range)
      ? [{ from: Number(range["from"]) / 60, until: Number(range["until"]) / 60 }]
      : [],
  );
}

/// What was used counts on the day of its last update only.
function useOf(mode: "device_mode" | "browser_mode", present: Date): ModeUse {
  const updated = new Date(user(`${usage}${mode}.last_update`, 0) / ticksInMs);
  const used = updated.toDateString() === present.toDateString() ? user(`${usage}${mode}.duration`, 0) / 60 : 0;
  const extension = user(`${usage}${mode}.extension`, 0) / ticksInMs;
  const ahead = (extension - present.getTime()) / 60_000;
  const second = present.getSeconds() / 60;
  return { used, extendedUntil: ahead > 0 ? minuteOfDay(present) + second + ahead : undefined };
}

/// Today as the settings have it.
export const dayFacts = computed<DayFacts>(() => {
  const present = now.value;
  const day = present.getDay();
  const quotas = user("common.time.quota.enabled", false);
  const bedtimes = user("common.time.curfew.enabled", false);
  const allowance = user(`common.time.quota.${weekDays[day]!}.duration`, secondsInDay);
  return {
    now: minuteOfDay(present),
    limited: user("common.time.enabled", false),
    allowance: quotas && allowance < secondsInDay ? allowance / 60 : undefined,
    modes: [useOf("device_mode", present), useOf("browser_mode", present)],
    today: bedtimes ? curfews(day) : [],
    tomorrow: bedtimes ? curfews(day + 1) : [],
  };
});

export const dayOutlook = computed(() => outlook(dayFacts.value));
export const usedToday = computed(() => Math.max(...dayFacts.value.modes.map((mode) => mode.used)));
export const extendedUntil = computed(() => {
  const points = dayFacts.value.modes.flatMap((mode) => mode.extendedUntil ?? []);
  return points.length > 0 ? Math.max(...points) : undefined;
});
