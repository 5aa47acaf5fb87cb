/// Minutes since midnight; until is exclusive, and 1440 is the day's end.
export interface Range {
  readonly from: number;
  readonly until: number;
}

/// What is known of one mode of use, the device's or the browser's.
export interface ModeUse {
  readonly used: number;
  /// Minutes since today's midnight, where an extension lies in the future.
  readonly extendedUntil?: number | undefined;
}

export interface DayFacts {
  readonly now: number;
  readonly limited: boolean;
  /// Minutes; undefined where no allowance holds.
  readonly allowance: number | undefined;
  readonly modes: readonly ModeUse[];
  readonly today: readonly Range[];
  readonly tomorrow: readonly Range[];
}

export type Binding = "off" | "curfew" | "extension" | "quota" | "spent" | "bedtime" | "none";

/// What ends today's use and when, in minutes since today's midnight; for "curfew" and "spent" when it may go on.
export interface Outlook {
  readonly binding: Binding;
  readonly at: number | undefined;
  /// Undefined where nothing ends it before midnight.
  readonly minutesLeft: number | undefined;
}

export const minutesInDay = 1440;

/// In order, those that touch or overlap as one, none outside the day.
export function joined(ranges: readonly Range[], dayEnd = minutesInDay): Range[] {
  const result: Range[] = [];
  for (const { from, until } of [...ranges].sort((one, other) => one.from - other.from)) {
    const range = { from: Math.max(from, 0), until: Math.min(until, dayEnd) };
    const last = result.at(-1);
    if (range.from >= range.until) continue;
    if (last && range.from <= last.until) result.splice(-1, 1, { from: last.from, until: Math.max(last.until, range.until) });
    else result.push(range);
  }
  return result;
}

/// The allowance of the mode that has least left counts; an extension counts for more than the allowance.
export function outlook({ now, limited, allowance, modes, today, tomorrow }: DayFacts): Outlook {
  if (!limited) return { binding: "off", at: undefined, minutesLeft: undefined };
  const shifted = tomorrow.map(({ from, until }) => ({ from: from + minutesInDay, until: until + minutesInDay }));
  const ranges = joined([...today, ...shifted], 2 * minutesInDay);
  const present = ranges.find(({ from, until }) => from <= now && now < until);
  if (present) return { binding: "curfew", at: present.until, minutesLeft: 0 };

  const left = modes.map(({ used, extendedUntil }) => {
    const ofAllowance = allowance === undefined ? Infinity : Math.max(allowance - used, 0);
    const ofExtension = Math.max((extendedUntil ?? now) - now, 0);
    return { minutes: Math.max(ofAllowance, ofExtension), extended: ofExtension > ofAllowance };
  });
  const least = left.reduce((one, other) => (other.minutes < one.minutes ? other : one), {
    minutes: allowance ?? Infinity,
    extended: false,
  });
  const bedtime = (ranges.find(({ from }) => from > now)?.from ?? Infinity) - now;
  const midnight = minutesInDay - now;
  if (least.minutes <= 0) return { binding: "spent", at: minutesInDay, minutesLeft: 0 };
  if (Math.min(least.minutes, bedtime) >= midnight) return { binding: "none", at: undefined, minutesLeft: undefined };
  if (bedtime < least.minutes) return { binding: "bedtime", at: now + bedtime, minutesLeft: bedtime };
  return { binding: least.extended ? "extension" : "quota", at: now + least.minutes, minutesLeft: least.minutes };
}

/// "07:30"; 1440 is "24:00", and what lies after it is a time of the next day.
export function clockText(minutes: number): string {
  const ofDay = minutes > minutesInDay ? minutes - minutesInDay : minutes;
  return `${String(Math.floor(ofDay / 60)).padStart(2, "0")}:${String(Math.floor(ofDay % 60)).padStart(2, "0")}`;
}
