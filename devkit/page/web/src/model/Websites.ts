import { computed, signal } from "@preact/signals";
import { connection } from "../connection/Connection";
import type { Json } from "../connection/Protocol";
import { addressForms, type AddressForms } from "../logic/Address";
import { fill, numbers, text } from "../text/Text";
import { attempt, tellDone, tellFailed } from "./Notices";
import { openSettings, settingsPages } from "./Rights";
import { changeSetting } from "./Settings";
import { fire, setVariable, variable } from "./Variables";

const restrictions = "@ContentControl\\WebsiteRestrictions:";
const listKey = "windows.browsing_protection.internal.sites.list";
const tabs = variable<string[]>(`${restrictions}enable_tab_list`);

export type ListName = "allowed" | "denied";

export interface WebsiteRow extends AddressForms {
  readonly byAdministrator: boolean;
}

function rowsOf(name: ListName) {
  const published = variable<Record<string, Json>[]>(`${restrictions}${name}_websites`);
  return computed<WebsiteRow[]>(() =>
    (published.value ?? []).map((row) => ({
      ...addressForms(String(row["0"] ?? "")),
      byAdministrator: row["readonly"] === true,
    })),
  );
}

export const websites = { allowed: rowsOf("allowed"), denied: rowsOf("denied") };
export const deniedEnabled = computed(() => tabs.value?.[1] !== "false");
const waiting = signal(0); // changes
/// A change is under way.
export const working = computed(() => waiting.value > 0);

let hasRights = false;
connection.onConnect(async () => {
  hasRights = false;
});

export function showWebsites(): Promise<void> {
  return fire(settingsPages.websites.shown);
}

/// The rights that were asked for on the page end with it.
export async function closeWebsites(): Promise<void> {
  hasRights = false;
  await fire(settingsPages.websites.closed);
}

/// The first change on the page asks for the rights; they stay until it is closed. False: they were refused.
async function run(work: () => Promise<void>): Promise<boolean> {
  hasRights ||= await openSettings(settingsPages.websites);
  if (!hasRights) {
    tellFailed(text.value.refused);
    return false;
  }
  await work();
  await connection.request("settle", { timeoutMs: 30_000 });
  return true;
}

let last: Promise<unknown> = Promise.resolve();

/// One change after another, in the order in which they were asked for.
function change(work: () => Promise<void>): Promise<boolean> {
  waiting.value += 1;
  const mine = last.then(() => run(work)).finally(() => (waiting.value -= 1));
  last = mine.catch(() => undefined);
  return mine;
}

function has(name: ListName, address: string): boolean {
  return websites[name].value.some((row) => row.stored === address);
}

async function act(name: ListName, item: Json): Promise<boolean> {
  return change(() => setVariable(`${restrictions}${name}_action_item`, item));
}

export async function addWebsite(name: ListName, address: string, stored: string): Promise<boolean> {
  const done = await act(name, { new: address });
  if (done && !has(name, stored)) tellFailed(fill(text.value.websites.failed, address));
  return done;
}

export async function editWebsite(name: ListName, old: string, address: string): Promise<boolean> {
  return act(name, { edit: { old, new: address } });
}

export async function removeWebsite(name: ListName, address: string): Promise<void> {
  if (!(await act(name, { remove: address }))) return;
  const t = text.value;
  if (has(name, address)) return tellFailed(fill(t.websites.failed, address));
  tellDone(fill(t.websites.removed, address), {
    label: t.undo,
    run: () => attempt(() => act(name, { new: address }).then(() => undefined)),
  });
}

/// Undone by writing the list back as it was, in one piece.
export async function clearWebsites(name: ListName): Promise<void> {
  const before = await connection.request("store.get", { scope: "user", key: listKey });
  const count = websites[name].value.filter((row) => !row.byAdministrator).length;
  if (!(await change(() => fire(`@ContentControl\\Triggers:clear_${name}_list`)))) return;
  const t = text.value;
  const left = websites[name].value.some((row) => !row.byAdministrator);
  if (left) return tellFailed(fill(t.websites.failed, t.websites[name]));
  tellDone(fill(t.websites.cleared, t.websites[name], numbers.value.format(count)), {
    label: t.undo,
    run: () => attempt(() => changeSetting("user", listKey, "object", before.value)),
  });
}
