/// The allowed hours of a week as the plug-in has them: 168 characters, Monday's 24 hours first, "1" for an allowed one.
export type Slots = string;

/// day: 0 is Monday.
export interface Cell {
  readonly day: number;
  readonly hour: number;
}

export const daysInWeek = 7;
export const hoursInDay = 24;
export const everyHour: Slots = "1".repeat(daysInWeek * hoursInDay);
export const noHour: Slots = "0".repeat(daysInWeek * hoursInDay);

export function isSlots(text: unknown): text is Slots {
  return typeof text === "string" && /^[01]{168}$/.test(text);
}

export function isAllowed(slots: Slots, { day, hour }: Cell): boolean {
  return slots[day * hoursInDay + hour] === "1";
}

export function allowedHours(slots: Slots): number {
  return [...slots].filter((slot) => slot === "1").length;
}

/// The rectangle between two cells in one colour, in whichever direction it was drawn.
export function paint(slots: Slots, from: Cell, to: Cell, allowed: boolean): Slots {
  const [firstDay, lastDay] = from.day <= to.day ? [from.day, to.day] : [to.day, from.day];
  const [firstHour, lastHour] = from.hour <= to.hour ? [from.hour, to.hour] : [to.hour, from.hour];
  const colour = (allowed ? "1" : "0").repeat(lastHour - firstHour + 1);
  let painted = slots;
  for (let day = firstDay; day <= lastDay; ++day) {
    const start = day * hoursInDay + firstHour;
    painted = painted.slice(0, start) + colour + painted.slice(start + colour.length);
  }
  return painted;
}

/// A click on the head of a day or an hour: all of it is allowed, or nothing where all of it was.
export function paintLine(slots: Slots, from: Cell, to: Cell): Slots {
  const full = paint(slots, from, to, true);
  return full === slots ? paint(slots, from, to, false) : full;
}

/// Where a key leads from a cell; nothing for a key that does not move. upright: the days stand side by side, as on a
/// narrow screen.
export function cellAfter(key: string, ctrl: boolean, { day, hour }: Cell, upright: boolean): Cell | undefined {
  const lastDay = daysInWeek - 1;
  const lastHour = hoursInDay - 1;
  const alongDays = (by: number) => ({ day: Math.min(Math.max(day + by, 0), lastDay), hour });
  const alongHours = (by: number) => ({ day, hour: Math.min(Math.max(hour + by, 0), lastHour) });
  const [across, down] = upright ? [alongDays, alongHours] : [alongHours, alongDays];
  switch (key) {
    case "ArrowLeft":
      return across(-1);
    case "ArrowRight":
      return across(1);
    case "ArrowUp":
      return down(-1);
    case "ArrowDown":
      return down(1);
    case "PageUp":
      return down(-lastHour);
    case "PageDown":
      return down(lastHour);
    case "Home":
      return ctrl ? { day: 0, hour: 0 } : across(-lastHour);
    case "End":
      return ctrl ? { day: lastDay, hour: lastHour } : across(lastHour);
    default:
      return undefined;
  }
}

/// "13:00"; the end of the day is "24:00".
export function hourText(hour: number): string {
  return `${String(hour).padStart(2, "0")}:00`;
}
