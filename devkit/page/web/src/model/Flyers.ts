import { computed, signal } from "@preact/signals";
import { connection } from "../connection/Connection";
import type { FlyerRow } from "../connection/Protocol";

const rows = signal<ReadonlyMap<number, FlyerRow>>(new Map());

/// Every notification, oldest first.
export const flyers = computed(() => [...rows.value.values()]);
/// Those on screen.
export const shownFlyers = computed(() => flyers.value.filter((flyer) => flyer.state === "shown"));

export async function pressButton(flyer: number, button: number): Promise<void> {
  await connection.request("flyer.press", { flyer, button });
}

connection.on("flyer", (flyer) => {
  rows.value = new Map(rows.value).set(flyer.id, flyer);
});

connection.onConnect(async () => {
  await connection.request("watch", { topic: "flyers" });
  rows.value = new Map((await connection.request("flyers", {})).map((flyer) => [flyer.id, flyer]));
});
