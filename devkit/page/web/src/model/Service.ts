// What the suite's service does beside the plug-in. Each deed is a list of requests, which a script sends as they
// stand.

import { connection } from "../connection/Connection";
import type { Commands, Json } from "../connection/Commands";
import type { Op } from "../connection/Protocol";
import { julianDay } from "../logic/DailyCounters";

export type Request = { [Name in Op & keyof Commands]: { op: Name } & Commands[Name] }[Op & keyof Commands];

const internal = "windows.browsing_protection.internal.";
export const countersKey = `${internal}statistics.daily_counters`;
const timeTrigger = `${internal}time_limit_trigger`;
const settle: Request = { op: "settle" };
/// What the store's functions answer when it cannot be read or written.
const storeFailed = 112;

function set(scope: "system" | "user", key: string, type: Commands["store.set"]["type"], value: Json): Request {
  return { op: "store.set", scope, key, type, value };
}

/// The lock or warning before ends first: the same number again would be no change.
export function warn(minutes: number): Request[] {
  return [...release(), set("user", timeTrigger, "int32", minutes), settle];
}

/// Without a time: until it is released.
export function lock(until: Date | undefined): Request[] {
  return [set("user", timeTrigger, "int32", until ? -Math.floor(until.getTime() / 1000) : -1), settle];
}

export function release(): Request[] {
  return [set("user", timeTrigger, "int32", 0), settle];
}

/// The plug-in signals the event when the user ends the session.
export function openBankingSession(closeEvent: string): Request[] {
  return [
    { op: "event.create", name: closeEvent },
    set("system", `${internal}banking_close_event`, "string", closeEvent),
    set("system", `${internal}banking_session_open`, "bool", true),
    settle,
  ];
}

export function closeBankingSession(): Request[] {
  return [set("system", `${internal}banking_session_open`, "bool", false), settle];
}

/// Adds to what is counted already. The plug-in sums up when it is told of new strings, or at midnight.
export function countVisits(counters: Json, day: Date, visits: number): Request[] {
  const julianDate = julianDay(day);
  const rows = (Array.isArray(counters) ? counters : []) as { [name: string]: Json }[];
  const none = { julianDate, websitesChecked: 0, bankingSessions: 0, harmfulBlocks: 0, wtsScans: 0, wtsBlocks: 0 };
  const counted: { [name: string]: Json } = rows.find((row) => row["julianDate"] === julianDate) ?? none;
  const others = rows.filter((row) => row["julianDate"] !== julianDate);
  const added = { ...counted, websitesChecked: Number(counted["websitesChecked"]) + visits };
  return [
    set("user", countersKey, "object", [...others, added]),
    settle,
    { op: "trigger", name: "@Localization\\MetaData\\Localization:updated" },
  ];
}

export function enforce(scope: string, key: string, on: boolean): Request[] {
  return [{ op: "store.constrain", scope, key, constraints: on ? 1 : 0 }, settle];
}

function storeFaults(functions: readonly string[], code: number): Request[] {
  const reached = functions.filter((name) => /^OrbStrata_(Open|Get|Set|Subscribe)/.test(name));
  return reached.map((name) => ({ op: "store.fault", function: name, code, count: 0 }));
}

/// Every call of the plug-in that reaches the store fails.
export function loseStore(functions: readonly string[]): Request[] {
  return storeFaults(functions, storeFailed);
}

export function bringStoreBack(functions: readonly string[]): Request[] {
  return [...storeFaults(functions, 0), { op: "trigger", name: "@Veridan\\Settings\\Triggers:load_data" }];
}

export async function carryOut(requests: readonly Request[]): Promise<void> {
  for (const { op, ...args } of requests) await connection.request(op, args as never);
}
