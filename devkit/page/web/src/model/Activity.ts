import { signal } from "@preact/signals";
import { useEffect } from "preact/hooks";
import { connection } from "../connection/Connection";
import type { MetricRow, NamedEventRow } from "../connection/Protocol";
import { Feed } from "./Feed";

export const metrics = signal<readonly MetricRow[]>([]);
export const metricsFeed: Feed<"metric"> = new Feed<"metric">({
  event: "metric",
  watch: { topic: "metrics" },
  load: async () => {
    metrics.value = await connection.request("metrics", {});
  },
  take: (events) => events.length > 0 && metricsFeed.loadSoon(),
});

export const urls = signal<readonly string[]>([]);
export const urlsFeed: Feed<"url"> = new Feed<"url">({
  event: "url",
  load: async () => {
    urls.value = await connection.request("urls", {});
  },
  take: (events) => events.length > 0 && urlsFeed.loadSoon(),
});

export const clipboard = signal("");
export const namedEvents = signal<readonly NamedEventRow[]>([]);
const everyMs = 1000;

async function look(): Promise<void> {
  if (document.hidden) return;
  clipboard.value = (await connection.request("clipboard.get", {})).text;
  namedEvents.value = await connection.request("events", {});
}

/// What no event tells of, while the component is shown.
export function useLooks(): void {
  useEffect(() => {
    const lookAgain = () => void look().catch(() => undefined);
    lookAgain();
    const timer = setInterval(lookAgain, everyMs);
    return () => clearInterval(timer);
  }, []);
}

export async function fillClipboard(text: string): Promise<void> {
  await connection.request("clipboard.set", { text });
  await look();
}

export async function makeEvent(name: string): Promise<void> {
  await connection.request("event.create", { name });
  await look();
}
