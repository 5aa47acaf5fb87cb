import { signal, type Signal } from "@preact/signals";
import { connection } from "../connection/Connection";
import type { HistoryRow, Json } from "../connection/Protocol";

const values = new Map<string, Signal<Json | undefined>>();
const triggerListeners = new Map<string, Set<(row: HistoryRow) => void>>();

/// The variable's value as the host has it; undefined where it has none.
export function variable<Value extends Json = Json>(id: string): Signal<Value | undefined> {
  let found = values.get(id);
  if (!found) values.set(id, (found = signal<Json | undefined>(undefined)));
  return found as unknown as Signal<Value | undefined>;
}

/// Ends when the function that it gives is called.
export function onTrigger(id: string, listener: (row: HistoryRow) => void): () => void {
  const listeners = triggerListeners.get(id) ?? new Set();
  triggerListeners.set(id, listeners);
  listeners.add(listener);
  return () => listeners.delete(listener);
}

export async function setVariable(name: string, value: Json): Promise<void> {
  await connection.request("set", { name, value });
}

export async function fire(name: string): Promise<void> {
  await connection.request("trigger", { name });
}

/// How often a trigger was fired after another one, or at all where the other never was.
export async function firedSince(id: string, other: string): Promise<number> {
  const [rows, others] = await Promise.all([
    connection.request("history", { name: id }),
    connection.request("history", { name: other }),
  ]);
  const last = others.at(-1)?.seq ?? 0;
  return rows.filter((row) => row.seq > last).length;
}

connection.on("variable", (row) => {
  if (row.kind === "set") variable(row.name).value = row.value;
  else for (const listener of triggerListeners.get(row.name) ?? []) listener(row);
});

connection.onConnect(async () => {
  await connection.request("watch", { topic: "variables", prefix: "" });
  const rows = await connection.request("variables", {});
  for (const [id, found] of values) if (!(id in rows)) found.value = undefined;
  for (const [id, row] of Object.entries(rows)) variable(id).value = row.value ?? undefined;
});
