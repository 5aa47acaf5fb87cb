import { connection } from "../connection/Connection";
import { text } from "../text/Text";
import { tellDone, tellFailed } from "./Notices";
import { withSettings, type SettingsPage } from "./Rights";
import { fire } from "./Variables";

/// The last error in the plug-in's log, which alone knows why a save failed.
export async function lastError(): Promise<string | undefined> {
  return (await connection.request("log", { lines: 1, level: 2 }))[0];
}

/// Whether the plug-in has met a store that another program keeps busy since it logged that: trying again helps.
export async function keptBusy(before: string | undefined): Promise<boolean> {
  const error = await lastError();
  return error !== before && error !== undefined && error.endsWith("saving failed, result 170");
}

/// Has the plug-in save what is written as a page's change, and tells how that went. False: nothing was saved, and what
/// was wanted is worth another try.
export async function savePage(page: SettingsPage, write: () => Promise<void>, holds: () => boolean): Promise<boolean> {
  const before = await lastError();
  const opened = await withSettings(page, async () => {
    await write();
    await fire("@Veridan\\Settings\\Triggers:save");
    await connection.request("settle", {});
    await fire("@Veridan\\Settings\\Triggers:load_data");
  });
  const busy = opened && !holds() && (await keptBusy(before));
  const t = text.value;
  if (opened && holds()) tellDone(t.saved);
  else tellFailed(busy ? t.busy : opened ? t.notSaved : t.refused);
  return opened && !busy;
}
