import { signal, type Signal } from "@preact/signals";
import settingsPage from "../../../../../docs/settings.md";
import { connection } from "../connection/Connection";
import type { Entry, HostEvents, Json, SettingType } from "../connection/Protocol";
import { isExact } from "../logic/JsonText";
import { parseSettings, type KnownSetting } from "../logic/SettingsTable";
import { Feed } from "./Feed";
import { attempt, tellDone } from "./Notices";

export const scopes = ["system", "user"] as const;
export const settingTypes: readonly SettingType[] = ["bool", "int32", "int64", "string", "utf8", "object"];
const enforced = 1;

export interface Setting {
  readonly id: string;
  readonly scope: string;
  readonly key: string;
  readonly known: KnownSetting | undefined;
  /// What the store has, and how often that was seen to change.
  readonly state: Signal<{ entry: Entry | undefined; changes: number }>;
  readonly searched: string;
}

/// What the panel shows, also when it is opened again.
export const storeFilter = signal("");
export const storedOnly = signal(false);

let known: ReadonlyMap<string, KnownSetting> | undefined;

/// The settings that docs/settings.md knows, by key.
export function knownSettings(): ReadonlyMap<string, KnownSetting> {
  known ??= new Map(parseSettings(settingsPage).map((setting) => [setting.key, setting]));
  return known;
}

function byKey(one: Setting, other: Setting): number {
  if (one.key !== other.key) return one.key < other.key ? -1 : 1;
  return one.scope < other.scope ? -1 : 1;
}

/// Every setting of the machine and of the user that is known or in the store. A change touches its own row; the filter
/// runs again for a row that comes or goes.
export class StoreTable {
  readonly rows = signal<readonly Setting[]>([]);
  readonly selected = signal<Setting | undefined>(undefined);
  readonly feed = new Feed<"store">({
    event: "store",
    watch: { topic: "store", prefix: "" },
    load: () => this.load(),
    take: (events) => this.take(events),
  });
  private readonly all = new Map<string, Setting>();
  /// In their order; nothing when one has come since.
  private sorted: readonly Setting[] | undefined;

  constructor() {
    for (const scope of scopes) for (const key of knownSettings().keys()) this.settingOf(scope, key);
    this.show();
  }

  get count(): number {
    return this.all.size;
  }

  filter(typed: string, onlyStored = storedOnly.value): void {
    storeFilter.value = typed;
    storedOnly.value = onlyStored;
    this.show();
  }

  open(scope: string, key: string): void {
    this.selected.value = this.settingOf(scope, key);
    this.show();
  }

  private settingOf(scope: string, key: string): Setting {
    const id = `${scope} ${key}`;
    const found = this.all.get(id);
    if (found) return found;
    const about = knownSettings().get(key);
    const searched = `${id} ${about?.purpose ?? ""}`.toLowerCase();
    const setting = { id, scope, key, known: about, state: signal({ entry: undefined, changes: 0 }), searched };
    this.all.set(id, setting);
    this.sorted = undefined;
    return setting;
  }

  /// Whether it is in the list as it was before.
  private put(setting: Setting, entry: Entry | undefined, seen: 0 | 1): boolean {
    const { entry: before, changes } = setting.state.peek();
    setting.state.value = { entry, changes: changes + seen };
    return (before === undefined) === (entry === undefined);
  }

  private async load(): Promise<void> {
    const lists = await Promise.all(scopes.map((scope) => connection.request("store.list", { scope })));
    const entries = new Map<string, Entry>();
    scopes.forEach((scope, i) => {
      for (const [key, entry] of Object.entries(lists[i]!)) entries.set(this.settingOf(scope, key).id, entry);
    });
    for (const [id, setting] of this.all) this.put(setting, entries.get(id), 0);
    this.show();
  }

  private take(events: readonly HostEvents["store"][]): void {
    let same = true;
    for (const { scope, key, kind, ...entry } of events)
      same = this.put(this.settingOf(scope, key), kind === "removed" ? undefined : entry, 1) && same;
    if (!same) this.show();
  }

  private show(): void {
    const words = storeFilter.value.toLowerCase().split(/\s+/).filter(Boolean);
    const isShown = ({ searched, known: about, state }: Setting) =>
      (state.peek().entry !== undefined || (about !== undefined && !storedOnly.value)) &&
      words.every((word) => searched.includes(word));
    this.sorted ??= [...this.all.values()].sort(byKey);
    this.rows.value = this.sorted.filter(isShown);
  }
}

export function isEnforcedEntry(entry: Entry | undefined): boolean {
  return ((entry?.constraints ?? 0) & enforced) !== 0;
}

export async function writeSetting({ scope, key }: Setting, type: SettingType, value: Json): Promise<void> {
  await connection.request("store.set", { scope, key, type, value });
}

/// Locks the value for everybody but the product, or no longer; the word's other bits stay.
export async function enforceSetting({ scope, key, state }: Setting, on: boolean): Promise<void> {
  const others = (state.peek().entry?.constraints ?? 0) & ~enforced;
  await connection.request("store.constrain", { scope, key, constraints: (others | (on ? enforced : 0)) >>> 0 });
}

export async function removeSetting(setting: Setting): Promise<void> {
  const { scope, key, state } = setting;
  const { entry } = state.peek();
  await connection.request("store.remove", { scope, key });
  const putBack = async () => {
    if (entry?.found) await writeSetting(setting, entry.type, entry.value);
    if (entry?.constraints) await connection.request("store.constrain", { scope, key, constraints: entry.constraints });
  };
  // What a browser could only read roughly is not written back as if it were exact.
  const canUndo = entry !== undefined && isExact(entry.value);
  tellDone(`${key} was removed.`, canUndo ? { label: "Undo", run: () => attempt(putBack) } : undefined);
}
