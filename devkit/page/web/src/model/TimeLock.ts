import { signal } from "@preact/signals";
import { connection } from "../connection/Connection";
import { fire, firedSince, onTrigger, setVariable, variable } from "./Variables";

const triggers = "@Veridan\\TimeLock\\Triggers:";

/// By their index, as the plug-in takes it.
export const extensionMinutes = [5, 15, 30, 60] as const;

export const blockDescription = variable<string>("@Veridan\\TimeLock\\Data:block_description");
/// How often the block dialog was shown since it was closed last; 0 when the computer is not locked.
export const blockShown = signal(0);
export const extendDialogOpen = signal(false);

export function requestExtension(): Promise<void> {
  return fire(`${triggers}request_extend_time_dialog`);
}

export async function extendTime(index: number): Promise<void> {
  extendDialogOpen.value = false;
  await setVariable("@Veridan\\TimeLock\\Data:time_extended_by_index", index);
  await fire(`${triggers}extend_time`);
}

export async function cancelExtension(): Promise<void> {
  extendDialogOpen.value = false;
  await fire(`${triggers}cancel_extend_time_dialog`);
}

onTrigger(`${triggers}show_block_dialog`, () => blockShown.value++);
onTrigger(`${triggers}close_block_dialog`, () => (blockShown.value = 0));
onTrigger(`${triggers}show_extend_time_dialog`, () => (extendDialogOpen.value = true));
for (const end of ["extend_time", "cancel_extend_time_dialog"])
  onTrigger(triggers + end, () => (extendDialogOpen.value = false));

connection.onConnect(async () => {
  blockShown.value = await firedSince(`${triggers}show_block_dialog`, `${triggers}close_block_dialog`);
});
