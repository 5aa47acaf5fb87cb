import assert from "node:assert/strict";
import { test } from "node:test";
import { becomes, go } from "../support/Browser";
import { host, page } from "../support/Scene";

const row = (table: string, name: string | RegExp) => page.getByRole("table", { name: table }).getByRole("row", { name });
const button = (name: string) => page.getByRole("button", { name, exact: true });

test("settings of another process come, are found as one types, changed, enforced, removed and put back", async () => {
  await go(page, "Store");
  await row("Settings", /system common\.content\.allowed_categories\.abortion/).waitFor();
  const entry = (i: number) => [`lab.number_${i}`, { type: "int32", value: i, constraints: 0 }];
  const entries = Object.fromEntries(Array.from({ length: 1000 }, (_, i) => entry(i)));
  await host.request("store.write", { scope: "user", entries });
  const filter = page.getByRole("searchbox", { name: "Filter by key, scope or purpose" });
  await filter.pressSequentially("user number_77");
  const shown = () => page.getByRole("table", { name: "Settings" }).getByRole("button").allTextContents();
  const wanted = Array.from({ length: 10 }, (_, i) => `lab.number_77${i}`);
  await becomes(shown, ["lab.number_77", ...wanted]);
  await filter.fill("switch of the web page filter");
  await becomes(shown, ["common.content.enabled", "common.content.enabled"]);
  await row("Settings", /user bool false by default/).waitFor();
  host.strata("set", "common.content.enabled", "true", "--type", "bool");
  await row("Settings", /user bool true/).waitFor();

  await button("user common.content.enabled").click();
  const editor = page.getByRole("region", { name: "user common.content.enabled" });
  await editor.getByRole("textbox", { name: "Value" }).fill("false");
  await editor.getByRole("button", { name: "Write" }).click();
  await becomes(() => host.setting("user", "common.content.enabled"), false);
  await editor.getByRole("switch", { name: "Enforced" }).click();
  await row("Settings", /Enforced/).waitFor();
  host.strata("remove", "common.content.enabled");
  await row("Settings", /Enforced/).waitFor({ state: "detached" });
  assert.equal(await editor.getByRole("button", { name: "Remove" }).isEnabled(), false);
  host.strata("set", "common.content.enabled", "true", "--type", "bool");
  await becomes(() => editor.getByRole("button", { name: "Remove" }).isEnabled(), true);
  await editor.getByRole("button", { name: "Remove" }).click();
  await becomes(() => host.setting("user", "common.content.enabled"), null);
  await button("Undo").click();
  await becomes(() => host.setting("user", "common.content.enabled"), true);
});

test("a fault is in sight on every page, whoever set it, until it is used up", async () => {
  await go(page, "Faults");
  await page.getByRole("combobox", { name: "Function" }).selectOption("NlFlyer_ShowFlyer");
  await page.getByRole("spinbutton", { name: "Code" }).fill("9");
  await host.request("watch", { topic: "faults" });
  await button("Set fault").click();
  await becomes(() => host.events.at(-1), {
    active: [{ code: 9, count: 1, function: "NlFlyer_ShowFlyer", library: "flyer" }],
    event: "faults",
  });
  await host.request("store.fault", { function: "OrbStrata_SetBool", key: "common.time.enabled", code: 5, count: 0 });
  await row("Active faults", /OrbStrata_SetBool common.time.enabled 5 until cleared/).waitFor();
  await go(page, "Main page");
  await page.getByText("2 faults are set").waitFor();
  await host.set("user", "windows.browsing_protection.internal.time_limit_trigger", "int32", 5);
  await page.getByText("1 fault is set").waitFor();
  await go(page, "Faults");
  await button("Take back OrbStrata_SetBool common.time.enabled").click();
  await page.getByText("Nothing is made to fail.").waitFor();
  await page.getByText("fault is set").waitFor({ state: "detached" });
});

test("the log is followed, filtered by text and level, and held", async () => {
  await go(page, "Log");
  await page.getByRole("combobox", { name: "Level" }).selectOption("Warning and graver");
  await page.getByRole("searchbox", { name: "Filter by text" }).fill("flyer");
  await page.getByRole("table", { name: "Log" }).getByText("Error showing a flyer: 9").first().waitFor();
  const count = () => page.getByRole("table", { name: "Log" }).getByRole("button").count();
  const before = await count();
  await button("Hold").click();
  await host.request("flyer.fault", { function: "NlFlyer_ShowFlyer", code: 9 });
  await host.set("user", "windows.browsing_protection.internal.time_limit_trigger", "int32", 4);
  await host.request("settle");
  await page.getByText(/[1-9]\d* waiting/).waitFor();
  assert.equal(await count(), before);
  await button("Hold").click();
  await becomes(async () => (await count()) > before, true);
});

test("what the plug-in asks of the suite and the desktop is shown, and what another client did there", async () => {
  await go(page, "Activity");
  await host.request("clipboard.set", { text: "copied elsewhere" });
  await host.request("event.create", { name: "veridan-activity" });
  await page.getByText("copied elsewhere").waitFor();
  await page.getByText("is not signalled").waitFor();
  await page.getByRole("textbox", { name: "Text" }).fill("copied here");
  await button("Fill").click();
  await becomes(async () => host.request("clipboard.get"), { text: "copied here" });
  await host.set("user", "windows.browsing_protection.internal.time_limit_trigger", "int32", -1);
  await row("Metrics", /600 major vdn_block/).waitFor();
  await host.set("user", "windows.browsing_protection.internal.time_limit_trigger", "int32", 0);
  await host.request("trigger", { name: "@ContentControl\\Triggers:show_fragfinn_sites" });
  await page.getByRole("listitem").getByText("fragfinn.example.com").waitFor();
});

test("the service's buttons do what the service does", async () => {
  await go(page, "Service");
  await page.getByRole("spinbutton", { name: "Minutes left" }).fill("7");
  await button("Warn").click();
  await page.getByRole("region", { name: "Computer time ends in 7 minutes" }).waitFor();
  await button("Lock").click();
  await page.getByText("The suite's pages are locked.").waitFor();
  await button("Release").click();
  await page.getByText("The suite's pages are locked.").waitFor({ state: "detached" });
  await button("Open session").click();
  await page.getByRole("complementary", { name: "Banking protection is on" }).waitFor();
  await button("Close session").click();
  await page.getByRole("complementary", { name: "Banking protection is on" }).waitFor({ state: "detached" });
  await button("Count visits").click();
  await button("Count visits").click();
  await page.getByRole("combobox", { name: "Setting" }).fill("common.time.enabled");
  await button("Enforce").click();
  await go(page, "Statistics");
  await page.getByText("50", { exact: true }).first().waitFor();
  await go(page, "Main page");
  await becomes(() => page.getByRole("switch", { name: "Time limit" }).getAttribute("aria-disabled"), "true");
  await go(page, "Service");
  await button("Lose the store").click();
  await page.getByText("faults are set").waitFor();
  await host.request("trigger", { name: "@Veridan\\Settings\\Triggers:load_data" });
  await button("Bring it back").click();
  await page.getByText("faults are set").waitFor({ state: "detached" });
});
