import { computed, signal } from "@preact/signals";
import { connection } from "../connection/Connection";
import type { FlyerRow } from "../connection/Protocol";

const rows = signal<ReadonlyMap<number, FlyerRow>>(new Map());

/// The notifications on screen, oldest first.
export const shownFlyers = computed(() => [...rows.value.values()].filter((flyer) => flyer.state === "shown"));

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
