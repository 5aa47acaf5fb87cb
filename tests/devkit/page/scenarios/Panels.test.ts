import assert from "node:assert/strict";
import { after, before, test } from "node:test";
import type { Page } from "playwright-core";
import { becomes, go, openPage } from "../support/Browser";
import { Host } from "../support/Host";

const limitTrigger = "windows.browsing_protection.internal.time_limit_trigger";
const status = "@ContentControl\\Status:main_status";

let host: Host;
let page: Page;
/// What the page watches now, by its own requests.
const watches = new Set<string>();

before(async () => {
  host = await Host.start();
  page = await openPage("about:blank");
  page.on("websocket", (socket) =>
    socket.on("framesent", ({ payload }) => {
      const { op, topic, prefix, on } = JSON.parse(String(payload)) as { [name: string]: unknown };
      if (op === "watch") watches[on === false ? "delete" : "add"](`${String(topic)} ${String(prefix ?? "")}`);
    }),
  );
  await page.goto(host.address);
});
after(() => host.end());

const table = (name: string) => page.getByRole("table", { name });
const row = (id: string) => table("Variables").getByRole("row").filter({ has: page.getByRole("button", { name: id, exact: true }) });
const value = (id: string) => row(id).getByRole("cell").nth(1).textContent();
const filter = (text: string) => page.getByRole("searchbox").fill(text);

test("a panel that is left leaves no watch behind", async () => {
  await page.locator(".page:not([inert])").waitFor();
  const before = [...watches].sort();
  const panels = await page.getByRole("navigation", { name: "Developer" }).getByRole("link").allTextContents();
  for (const name of panels) await go(page, name);
  await go(page, "Main page");
  await becomes(() => [...watches].sort(), before);
});

test("the suite's lock covers its own pages, and a developer gets past it", async () => {
  await host.set("user", limitTrigger, "int32", -1);
  const lock = page.getByRole("dialog", { name: "Computer time is over" });
  await lock.waitFor();
  await assert.rejects(page.getByRole("link", { name: "Statistics" }).click({ timeout: 300 }), /Timeout/);
  await page.getByRole("link", { name: "Variables" }).click();
  await lock.waitFor({ state: "detached" });
  await page.getByRole("status").getByText("The suite's pages are locked.").waitFor();
  await page.getByRole("link", { name: "Show" }).click();
  await lock.waitFor();
  await host.set("user", limitTrigger, "int32", 0);
  await lock.waitFor({ state: "detached" });
});

test("what another process causes touches the row of the variable alone", async () => {
  await go(page, "Variables");
  await filter("contentcontrol status");
  await becomes(() => value("main_status"), '"UsersProtected"');
  assert.match((await row("main_status").textContent())!, /QString/);
  await page.evaluate(() => {
    const touched: string[] = ((window as unknown as { touched: string[] }).touched = []);
    new MutationObserver((changes) => {
      for (const { target } of changes) {
        const element = target instanceof Element ? target : target.parentElement;
        touched.push(element?.closest("tr")?.querySelector("button")?.textContent ?? "the list");
      }
    }).observe(document.querySelector(".scroll")!, { subtree: true, childList: true, characterData: true });
  });
  host.strata("--scope", "system", "set", "windows.browsing_protection.enabled", "false");
  await becomes(() => value("main_status"), '"UsersNotProtected"');
  await row("main_status").locator(".flash").waitFor();
  const touched = await page.evaluate(() => [...new Set((window as unknown as { touched: string[] }).touched)]);
  assert.ok(touched.includes("main_status") && !touched.includes("the list") && !touched.includes("Status:"), String(touched));

  await row("main_status").getByRole("button").click();
  const differences = page.getByRole("region", { name: "Since the value before" });
  await differences.getByText('"UsersProtected" → "UsersNotProtected"').waitFor();
});

test("a plug-in that goes leaves its variables without an owner", async () => {
  const owner = () => row("main_status").getByRole("cell").nth(3).textContent();
  await becomes(async () => ((await owner()) ?? "").length > 0, true);
  await host.request("unload");
  await becomes(owner, "");
  await host.request("load");
  await becomes(async () => ((await owner()) ?? "").length > 0, true);
});

test("a variable is written and fired, and what is typed has to be JSON", async () => {
  const editor = page.getByRole("textbox", { name: "Value" });
  await editor.fill('{"a": 1,}');
  await page.getByRole("alert").getByText("This is not JSON").waitFor();
  await editor.fill('{"a": [1, true]}');
  await page.getByRole("button", { name: "Write" }).click();
  await becomes(() => host.request("get", { name: status }), { a: [1, true] });
  await becomes(() => value("main_status"), '{"a":[1,true]}');
  await page.getByRole("button", { name: "Fire" }).click();
  await becomes(() => row("main_status").getByRole("cell").nth(6).textContent(), "1");
});

test("a branch is closed, pinned, and shows that something changes below it", async () => {
  await filter("");
  await table("Variables").getByRole("button", { name: "@ContentControl\\", exact: true }).click();
  const first = table("Variables").getByRole("row").nth(1);
  const before = await first.getByRole("button").first().textContent();
  await page.getByRole("button", { name: "Pin @ContentControl\\Status:" }).click();
  await first.getByRole("button", { name: "@ContentControl\\Status:", exact: true }).waitFor();
  await host.request("set", { name: status, value: "UsersProtected" });
  await first.locator(".flash").waitFor();
  await page.getByRole("button", { name: "Pin @ContentControl\\Status:" }).first().click();
  await becomes(() => first.getByRole("button").first().textContent(), before);
});

test("a held panel stays as it is, says when no more is kept, and goes on with what is true then", async () => {
  await filter("@Held");
  await host.request("set", { name: "@Held:a", value: 1 });
  await becomes(() => value("a"), "1");
  await page.getByRole("button", { name: "Hold" }).click();
  await host.request("set", { name: "@Held:a", value: 2 });
  await page.getByRole("status").getByText("1 waiting").waitFor();
  assert.equal(await value("a"), "1");
  const values = Object.fromEntries(Array.from({ length: 10_001 }, (_, i) => [`@Held:${i}`, `${i}`]));
  await host.request("strings", { language: "en", values });
  await page.getByRole("status").getByText("10,000 waiting; the rest").waitFor();
  await page.getByRole("button", { name: "Hold" }).click();
  await page.getByText("10002 of").waitFor();
  await filter("@Held:a");
  await becomes(() => value("a"), "2");
});

test("a change leads to what it caused, and back", async () => {
  await go(page, "History");
  await host.request("trigger", { name: "@Veridan\\Settings\\Triggers:load_data" });
  await filter("triggers:load_data");
  await table("History").getByRole("button", { name: "load_data" }).last().click();
  const caused = page.getByRole("region", { name: "What it caused" });
  await caused.getByRole("button", { name: "@TimeLimit\\Data:time_slots" }).click();
  await page.getByRole("heading", { name: "@TimeLimit\\Data:time_slots" }).waitFor();
  assert.equal(await table("History").locator("tr.marked").count(), 1);
  await page.getByRole("region", { name: "Caused by" }).getByRole("button", { name: "load_data" }).click();
  await page.getByRole("heading", { name: "load_data" }).waitFor();

  await page.getByRole("combobox", { name: "By" }).selectOption("plug-in");
  await filter("main_status");
  await becomes(async () => [...new Set(await table("History").locator("td:nth-child(3)").allTextContents())], ["plug-in"]);
  host.strata("--scope", "system", "set", "windows.browsing_protection.enabled", "true");
  await becomes(() => table("History").getByRole("row").last().getByRole("cell").last().textContent(), '"UsersProtected"');
});
