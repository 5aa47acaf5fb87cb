import { signal } from "@preact/signals";
import { connection } from "../connection/Connection";
import { isMirrored } from "./Settings";
import { fire } from "./Variables";

/// Whether there is a plug-in behind the pages: it was loaded and its start succeeded.
export const plugInRuns = signal(true);

/// The settings pages show what they showed last until the plug-in is asked to publish anew.
export function reload(): Promise<void> {
  return fire("@Veridan\\Settings\\Triggers:load_data");
}

export async function loadPlugIn(): Promise<void> {
  const { initialized, error } = await connection.request("load", {});
  if (!initialized) throw new Error(error ?? "The plug-in's start failed; its log says why.");
}

/// Asks the watchdog of a host that hangs or has died for another one, in which the plug-in is loaded then.
export function startAgain(): void {
  startsAgain = true;
  connection.tell("restart", {});
}
let startsAgain = false;

/// The plug-in publishes some settings only when it is asked to: after a change of any other process, too.
const reloadSoonMs = 50;
let soon: ReturnType<typeof setTimeout> | undefined;
function reloadSoon(): void {
  clearTimeout(soon);
  soon = setTimeout(() => plugInRuns.value && reload().catch(() => undefined), reloadSoonMs);
}
connection.on("store", ({ key }) => isMirrored(key) && reloadSoon());

connection.on("host", ({ initialized }) => {
  plugInRuns.value = initialized;
  if (initialized) reload().catch(() => undefined);
});

connection.onConnect(async () => {
  await connection.request("watch", { topic: "host" });
  plugInRuns.value = (await connection.request("info", {})).initialized;
  if (plugInRuns.value) reload().catch(() => undefined);
  else if (startsAgain) connection.tell("load", {});
  startsAgain = false;
});
