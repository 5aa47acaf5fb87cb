import { appendFileSync } from "node:fs";
import { test } from "node:test";
import type { Page } from "playwright-core";
import { go, openPage } from "../../tests/devkit/page/support/Browser";
import { Host } from "../../tests/devkit/page/support/Host";
import { framesDuring, scrollList, show, showHead } from "./Figures";

const pause = (ms: number) => new Promise((resolve) => setTimeout(resolve, ms));

/// Changes variables 200 times a second until the function that it gives is called, which says how often it did.
function changeVariables(host: Host, names: readonly string[]): () => number {
  const start = performance.now();
  let changes = 0;
  const timer = setInterval(() => {
    for (; changes < (performance.now() - start) / 5; ++changes)
      void host.request("set", { name: names[(changes * 7) % names.length]!, value: `changed ${changes}` });
  }, 5);
  return () => {
    clearInterval(timer);
    return changes;
  };
}

/// 2,500 variables in the tree and 10,000 rows of history, left as they are and scrolled, at 200 changes a second.
async function showPanels(host: Host, page: Page): Promise<void> {
  const names = Array.from({ length: 2500 }, (_, i) => `@Bench\\Group${i % 25}:variable${i}`);
  for (let i = 0; i < 4; ++i)
    await host.request("strings", { language: "en", values: Object.fromEntries(names.map((name) => [name, `value ${i}`])) });
  for (const [panel, filter, rows] of [["Variables", "bench", "2500 of"], ["History", "", "10,000 of"]] as const) {
    await go(page, panel);
    await page.getByRole("searchbox").fill(filter);
    await page.getByText(rows).waitFor();
    const stop = changeVariables(host, names);
    const start = performance.now();
    const still = await framesDuring(page, () => scrollList(page, 0));
    const scrolled = await framesDuring(page, () => scrollList(page, 1));
    const rate = Math.round((stop() * 1000) / (performance.now() - start));
    show(`${panel.toLowerCase()} at ${rate} changes a second, frame`, still, 50);
    show("scrolled meanwhile, frame", scrolled, 50);
  }
}

test("the panels' figures", { timeout: 600_000 }, async () => {
  showHead("panels");
  const host = await Host.start();
  const page = await openPage(host.address);
  await showPanels(host, page);

  const entry = (i: number) => [`lab.number_${i}`, { type: "int32", value: i, constraints: 0 }];
  const entries = Object.fromEntries(Array.from({ length: 1000 }, (_, i) => entry(i)));
  await host.request("store.write", { scope: "user", entries });
  await go(page, "Store");
  const filter = page.getByRole("searchbox", { name: "Filter by key, scope or purpose" });
  await page.getByText("1302 of 1302").waitFor();
  const typed = await framesDuring(page, async () => {
    for (let i = 0; i < 5; ++i) {
      await filter.pressSequentially("user number_77", { delay: 60 });
      await filter.fill("");
    }
  });
  show("1,000 keys filtered as one types, frame", typed, 50);
  const changed = await framesDuring(page, async () => {
    for (let i = 0; i < 500; ++i) {
      void host.set("user", `lab.number_${i}`, "int32", i + 1000);
      await pause(5);
    }
    await host.request("settle");
  });
  show("1,000 keys, 200 changes a second, frame", changed, 50);

  const { logFile } = (await host.request("info")) as { logFile: string };
  const write = (from: number, count: number) => {
    const line = (i: number) => `2024-05-06 07:08:09.010 [1a.2b]  I: line ${from + i} of a long day\r\n`;
    const lines = Array.from({ length: count }, (_, i) => line(i));
    appendFileSync(logFile, Buffer.from(lines.join(""), "utf16le"));
  };
  write(0, 5000);
  await go(page, "Log");
  await page.getByText("line 4999 of a long day").waitFor();
  show("5,000 log lines scrolled, frame", await framesDuring(page, () => scrollList(page)), 50);
  const followed = await framesDuring(page, async () => {
    for (let i = 0; i < 100; ++i) {
      write(5000 + i * 50, 50);
      await pause(20);
    }
    await page.getByText("line 9999 of a long day").waitFor();
  });
  show("5,000 log lines come while they are followed, frame", followed, 50);
  await host.end();
});
