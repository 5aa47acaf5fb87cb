import assert from "node:assert/strict";
import { after, before, test } from "node:test";
import type { Page } from "playwright-core";
import { becomes, go, openPage } from "../support/Browser";
import { Host } from "../support/Host";

let host: Host;
let page: Page;
before(async () => {
  host = await Host.start();
  page = await openPage(host.address);
});
after(() => host.end());

test("the suite's lock covers its own pages, and a developer gets past it", async () => {
  await host.set("user", "windows.browsing_protection.internal.time_limit_trigger", "int32", -1);
  const lock = page.getByRole("dialog", { name: "Computer time is over" });
  await lock.waitFor();
  assert.equal(await page.getByRole("link", { name: "Statistics" }).isVisible(), true);
  await assert.rejects(page.getByRole("link", { name: "Statistics" }).click({ timeout: 300 }), /Timeout/);
  await page.getByRole("link", { name: "Variables" }).click();
  await lock.waitFor({ state: "detached" });
  await page.getByRole("status").getByText("The suite's pages are locked.").waitFor();
  await page.getByRole("link", { name: "Show" }).click();
  await lock.waitFor();
  await host.set("user", "windows.browsing_protection.internal.time_limit_trigger", "int32", 0);
  await lock.waitFor({ state: "detached" });
  await becomes(() => page.getByText("The suite's pages are locked.").count(), 0);
});

test("variables stand in a tree", async () => {
  await go(page, "Variables");
  const table = page.getByRole("table", { name: "Variables" });
  await page.getByRole("searchbox", { name: "Filter by id, type or owner" }).fill("main_status");
  await table.getByRole("button", { name: "main_status" }).click();
});
