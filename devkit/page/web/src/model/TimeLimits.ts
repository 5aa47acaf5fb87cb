import { computed, signal } from "@preact/signals";
import { Edits } from "../logic/Edits";
import { everyHour, isSlots, type Slots } from "../logic/WeekGrid";
import { settingsPages } from "./Rights";
import { savePage } from "./Saving";
import { isEnforced } from "./Settings";
import { setVariable, variable } from "./Variables";

const slotsId = "@TimeLimit\\Data:time_slots";
const hoursId = "@TimeLimit\\Data:weekday_hours_value";
const publishedSlots = variable<string>(slotsId);
const publishedHours = variable<number>(hoursId);

/// Eight hours and more are the whole day.
export const unlimitedHours = 8;

const weekDays = ["monday", "tuesday", "wednesday", "thursday", "friday", "saturday", "sunday"] as const;

export const lockedDays = computed(() =>
  weekDays.map((day) => isEnforced("user", `common.time.curfew.${day}.ranges`)),
);
export const hoursLocked = computed(() => weekDays.some((day) => isEnforced("user", `common.time.quota.${day}.duration`)));

interface Limits {
  readonly slots: Slots;
  readonly hours: number;
}

const published = computed<Limits>(() => ({
  slots: isSlots(publishedSlots.value) ? publishedSlots.value : everyHour,
  hours: publishedHours.value ?? unlimitedHours,
}));

const draft = signal<Edits<Limits> | undefined>(undefined);
const edits = computed(() => draft.value ?? Edits.of(published.value));

export const limits = computed(() => edits.value.now);
export const canUndo = computed(() => edits.value.canUndo);
export const canRedo = computed(() => edits.value.canRedo);

const same = (one: Limits, other: Limits) => one.slots === other.slots && one.hours === other.hours;
export const limitsChanged = computed(() => draft.value !== undefined && !same(draft.value.now, published.value));

export function changeLimits(change: Partial<Limits>): void {
  const next = { ...limits.value, ...change };
  if (!same(next, limits.value)) draft.value = edits.value.to(next);
}

export function undoLimits(): void {
  draft.value = edits.value.undo();
}

export function redoLimits(): void {
  draft.value = edits.value.redo();
}

export function discardLimits(): void {
  draft.value = undefined;
}

export async function saveLimits(): Promise<void> {
  const wanted = limits.value;
  const write = async () => {
    await setVariable(slotsId, wanted.slots);
    await setVariable(hoursId, wanted.hours);
  };
  const done = await savePage(settingsPages.timeLimits, write, () => same(wanted, published.value));
  if (done && same(wanted, limits.value)) draft.value = undefined; // or there are newer changes by now
}
