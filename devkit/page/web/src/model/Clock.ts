import { signal } from "@preact/signals";

const everyMs = 15_000;

/// The present time, for what moves with it.
export const now = signal(new Date());

setInterval(() => (now.value = new Date()), everyMs);

/// Monday is 0.
export function dayOfWeek(date: Date): number {
  return (date.getDay() + 6) % 7;
}

export function minuteOfDay(date: Date): number {
  return date.getHours() * 60 + date.getMinutes();
}
