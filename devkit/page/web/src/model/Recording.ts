import { signal } from "@preact/signals";
import { connection } from "../connection/Connection";
import type { RecordResult } from "../connection/Protocol";
import { loadPlugIn, plugInRuns } from "./PlugIn";

/// Whether the host is making a recording, whoever began it.
export const recording = signal(false);
/// The last one that this page ended.
export const recorded = signal<RecordResult | undefined>(undefined);

/// From a fresh start a recording holds everything that its replay needs; else not which pages were open.
export async function beginRecording(fromFreshStart: boolean): Promise<void> {
  if (fromFreshStart && plugInRuns.value) await connection.request("unload", {});
  await connection.request("record", {});
  if (fromFreshStart) await loadPlugIn();
}

export async function endRecording(): Promise<void> {
  recorded.value = await connection.request("record", { on: false });
}

connection.on("host", (host) => (recording.value = host.recording));
connection.onConnect(async () => {
  recording.value = (await connection.request("info", {})).recording;
});
