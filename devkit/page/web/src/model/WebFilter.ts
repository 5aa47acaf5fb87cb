import { computed, signal } from "@preact/signals";
import type { Json } from "../connection/Protocol";
import { sameCategories, type CategoryMap } from "../logic/Categories";
import { settingsPages } from "./Rights";
import { savePage } from "./Saving";
import { setVariable, variable } from "./Variables";

const data = "@ContentControl\\Data:";
const byCategory = variable<boolean>(`${data}categories_filter`);
const fragfinn = variable<boolean>(`${data}allow_fragfinn_website_state`);
const categories = variable<{ Categories?: Json }>(`${data}current_user_categories`);
export const fragfinnOffered = variable<boolean>(`${data}enable_checkbox_fragfinn_element`);

export interface FilterSettings {
  readonly byCategory: boolean;
  readonly fragfinn: boolean;
  readonly categories: CategoryMap;
}

const published = computed<FilterSettings>(() => ({
  byCategory: byCategory.value !== false,
  fragfinn: fragfinn.value === true,
  categories: (categories.value?.Categories ?? {}) as CategoryMap,
}));

function same(one: FilterSettings, other: FilterSettings): boolean {
  // Each mode saves its own part only.
  return (
    one.byCategory === other.byCategory &&
    (one.byCategory ? sameCategories(one.categories, other.categories) : one.fragfinn === other.fragfinn)
  );
}

const draft = signal<FilterSettings | undefined>(undefined);
/// What the page shows: the draft, or what holds.
export const filter = computed(() => draft.value ?? published.value);
export const filterChanged = computed(() => draft.value !== undefined && !same(draft.value, published.value));

export function changeFilter(change: Partial<FilterSettings>): void {
  draft.value = { ...filter.value, ...change };
}

export function discardFilter(): void {
  draft.value = undefined;
}

export async function saveFilter(): Promise<void> {
  const wanted = filter.value;
  const write = async () => {
    await setVariable(`${data}categories_filter`, wanted.byCategory);
    await setVariable(`${data}allow_fragfinn_website_state`, wanted.fragfinn);
    await setVariable(`${data}current_user_categories`, { Categories: wanted.categories as Record<string, boolean> });
  };
  const done = await savePage(settingsPages.webFilter, write, () => same(wanted, published.value));
  if (done && same(wanted, filter.value)) draft.value = undefined; // or there are newer changes by now
}
