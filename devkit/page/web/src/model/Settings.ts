import { signal, type Signal } from "@preact/signals";
import { connection } from "../connection/Connection";
import type { Entry, Json, Scope, SettingType } from "../connection/Protocol";

/// The part of the store that the pages show beside what the plug-in tells them.
const mirrored: readonly [scope: "system" | "user", prefix: string][] = [
  ["system", "windows.browsing_protection.enabled"],
  ["system", "windows.browsing_protection.block_"],
  ["system", "windows.browsing_protection.show_link_reputations_on_search_results"],
  ["system", "windows.browsing_protection.banking_protection."],
  ["user", "common.content."],
  ["user", "common.time."],
  ["user", "windows.browsing_protection.search_result_filter."],
  ["user", "windows.browsing_protection.skip_activate_extensions"],
  ["user", "windows.browsing_protection.fragfinn."],
  ["user", "windows.browsing_protection.web_content_control."],
  ["user", "windows.browsing_protection.internal.time_limit_data."],
  ["user", "windows.browsing_protection.internal.statistics."],
];

const entries = new Map<string, Signal<Entry | undefined>>();

/// A setting as it is in the store; undefined where it has the default.
export function setting(scope: Scope, key: string): Signal<Entry | undefined> {
  const name = `${scope} ${key}`;
  let found = entries.get(name);
  if (!found) entries.set(name, (found = signal<Entry | undefined>(undefined)));
  return found;
}

export function settingValue<Value extends Json>(scope: Scope, key: string, otherwise: Value): Value {
  return (setting(scope, key).value?.value as Value | undefined) ?? otherwise;
}

/// Set by the administrator: nobody but the product changes it.
export function isEnforced(scope: Scope, key: string): boolean {
  return ((setting(scope, key).value?.constraints ?? 0) & 1) !== 0;
}

/// Changes a setting as the suite does, which owns those that the plug-in only shows.
export async function changeSetting(scope: Scope, key: string, type: SettingType, value: Json): Promise<void> {
  await connection.request("store.set", { scope, key, type, value });
  await connection.request("settle", {});
}

/// Whether the pages follow the key.
export function isMirrored(key: string): boolean {
  return mirrored.some(([, prefix]) => key.startsWith(prefix));
}

connection.on("store", ({ scope, key, kind, ...entry }) => {
  if (isMirrored(key)) setting(scope, key).value = kind === "removed" ? undefined : entry;
});

connection.onConnect(async () => {
  const found = new Map<string, Entry>();
  for (const [scope, prefix] of mirrored) {
    await connection.request("watch", { topic: "store", prefix });
    for (const [key, entry] of Object.entries(await connection.request("store.list", { scope, prefix })))
      found.set(`${scope} ${key}`, entry);
  }
  for (const [name, known] of entries) if (!found.has(name)) known.value = undefined;
  for (const [name, entry] of found) setting(...(name.split(" ") as [Scope, string])).value = entry;
});
