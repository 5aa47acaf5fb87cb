import { signal } from "@preact/signals";
import { connection } from "../connection/Connection";
import type { FaultLibrary, FaultRow } from "../connection/Protocol";

/// What is made to fail, by whichever client.
export const faults = signal<readonly FaultRow[]>([]);
/// The functions that can be, by library.
export const functions = signal<Readonly<Record<FaultLibrary, readonly string[]>>>({
  store: [],
  flyer: [],
  metrics: [],
});

export function libraryOf(name: string): FaultLibrary {
  const names = Object.keys(functions.value) as FaultLibrary[];
  return names.find((library) => functions.value[library].includes(name)) ?? "store";
}

/// With the code 0 it takes such faults back.
export async function setFault({ library, function: name, key, code, count }: FaultRow): Promise<void> {
  const args = { code, count, ...(name !== undefined && { function: name }) };
  if (library === "store") await connection.request("store.fault", { ...args, ...(key !== undefined && { key }) });
  else await connection.request(`${library}.fault`, args);
}

export function takeBack(fault: FaultRow): Promise<void> {
  return setFault({ ...fault, code: 0 });
}

export async function clearFaults(): Promise<void> {
  await connection.request("store.fault", {});
  await connection.request("flyer.fault", {});
  await connection.request("metrics.fault", { code: 0 });
}

connection.on("faults", ({ active }) => (faults.value = active));

connection.onConnect(async () => {
  await connection.request("watch", { topic: "faults" });
  const { active, functions: known } = await connection.request("faults", {});
  faults.value = active;
  functions.value = known;
});
