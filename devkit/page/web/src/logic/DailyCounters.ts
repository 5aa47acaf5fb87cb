import type { Json } from "../connection/Protocol";

export const counterNames = ["websitesChecked", "harmfulBlocks", "wtsScans", "wtsBlocks", "bankingSessions"] as const;
export type CounterName = (typeof counterNames)[number];

export interface DayCount {
  readonly julianDate: number;
  readonly count: number;
}

const julianDayOf1970 = 2440588;
const msInDay = 86_400_000;

/// The Julian day number of a local calendar date.
export function julianDay(date: Date): number {
  return Math.floor(Date.UTC(date.getFullYear(), date.getMonth(), date.getDate()) / msInDay) + julianDayOf1970;
}

export function dateOfJulianDay(day: number): Date {
  const utc = new Date((day - julianDayOf1970) * msInDay);
  return new Date(utc.getUTCFullYear(), utc.getUTCMonth(), utc.getUTCDate());
}

/// One counter of the last days, today included; a day that nobody counted has 0.
export function lastDays(counters: Json, name: CounterName, today: number, days: number): DayCount[] {
  const counts = new Map<number, number>();
  for (const row of Array.isArray(counters) ? counters : []) {
    if (row === null || typeof row !== "object" || Array.isArray(row)) continue;
    counts.set(Number(row["julianDate"]), Number(row[name] ?? 0));
  }
  return Array.from({ length: days }, (_, i) => {
    const julianDate = today - days + 1 + i;
    return { julianDate, count: counts.get(julianDate) ?? 0 };
  });
}

/// How many days back the earliest count lies, today included; at least one.
export function countedDays(counters: Json, today: number): number {
  const days = (Array.isArray(counters) ? counters : [])
    .map((row) => (row !== null && typeof row === "object" && !Array.isArray(row) ? Number(row["julianDate"]) : today))
    .filter((day) => day <= today);
  return today - Math.min(today, ...days) + 1;
}
