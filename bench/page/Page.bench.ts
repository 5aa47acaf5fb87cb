import { readFileSync } from "node:fs";
import { test } from "node:test";
import type { Page } from "playwright-core";
import { go, openPage } from "../../tests/devkit/page/support/Browser";
import { Host } from "../../tests/devkit/page/support/Host";
import { framesDuring, scrollList, show, showHead } from "./Figures";

const status = "@ContentControl\\Status:main_status";
const headings = { UsersProtected: "You are protected", UsersNotProtected: "You are not protected" };

/// Leaves in the page when each heading that follows came onto the screen: in the frame that shows it.
async function watchHeading(page: Page): Promise<void> {
  await page.locator(".page:not([inert])").waitFor();
  await page.getByRole("heading", { name: headings.UsersProtected }).waitFor();
  await page.evaluate(() => {
    const shown: number[] = ((window as unknown as { shown: number[] }).shown = []);
    const later = () => requestAnimationFrame(() => shown.push(performance.timeOrigin + performance.now()));
    new MutationObserver(later).observe(document.querySelector(".status h2")!, { characterData: true, subtree: true });
  });
}

/// From the moment at which the host is told of a change to the frame that shows it.
async function eventToScreen(host: Host, pages: readonly Page[], count: number): Promise<number[]> {
  const told: number[] = [];
  for (const page of pages) await watchHeading(page);
  await host.request("settle");
  for (let i = 0; i < count; ++i) {
    const value = i % 2 === 0 ? "UsersNotProtected" : "UsersProtected";
    told.push(performance.timeOrigin + performance.now());
    await host.request("set", { name: status, value });
    for (const page of pages)
      await page.waitForFunction((n) => (window as unknown as { shown: number[] }).shown.length === n, i + 1);
  }
  const shown = await Promise.all(pages.map((page) => page.evaluate(() => (window as unknown as { shown: number[] }).shown)));
  return shown.flatMap((times) => times.map((time, i) => time - told[i]!));
}

/// Of one process, in milliseconds.
function cpuTime(pid: number): number {
  const fields = readFileSync(`/proc/${pid}/stat`, "utf8").replace(/^.*\) /, "").split(" ");
  return (Number(fields[11]) + Number(fields[12])) * 10;
}

test("the page's figures", { timeout: 600_000 }, async () => {
  showHead("page");
  const host = await Host.start();
  const shown: number[] = [];
  for (let i = 0; i < 9; ++i) {
    const page = await openPage("about:blank");
    const start = performance.now();
    await page.goto(host.address);
    await page.getByRole("heading", { name: headings.UsersProtected }).waitFor();
    shown.push(performance.now() - start);
    await page.context().close();
  }
  show("page shown", shown);

  const first = await openPage(host.address);
  show("event to screen", await eventToScreen(host, [first], 300), 50);
  const before = cpuTime(host.pid);
  await new Promise((resolve) => setTimeout(resolve, 5000));
  console.log(`${"host idle for 5 s with a page, CPU time".padEnd(52)} ${`${cpuTime(host.pid) - before} ms`.padStart(10)}`);

  await first.context().close();
  const ten = await Promise.all(Array.from({ length: 10 }, () => openPage(host.address)));
  show("event to screen, ten pages", await eventToScreen(host, ten, 50));
  await Promise.all(ten.map((page) => page.context().close()));

  const sites = Array.from({ length: 20_000 }, (_, i) => ({ url: `www.site-${i}.example`, label: "", allowed: true }));
  await host.set("user", "windows.browsing_protection.internal.sites.list", "object", sites);
  const page = await openPage(host.address);
  const start = performance.now();
  await go(page, "Websites");
  await page.getByText("20,000 websites").waitFor();
  show("20,000 websites shown", [performance.now() - start]);
  show("20,000 websites scrolled, frame", await framesDuring(page, () => scrollList(page)), 50);
  await host.end();
});
