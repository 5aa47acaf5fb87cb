import assert from "node:assert/strict";
import { test } from "node:test";
import { answer, becomes, go, isOn } from "../support/Browser";
import { host, page } from "../support/Scene";

const sites = "windows.browsing_protection.internal.sites.list";

const table = (name: string) => page.getByRole("table", { name });
const cell = (name: string) => page.getByRole("grid", { name: "Allowed hours" }).getByRole("gridcell", { name, exact: true });
const selected = (name: string) => cell(name).getAttribute("aria-selected");

async function addresses(name: string): Promise<string[]> {
  return (await table(name).locator(".address").allTextContents()).sort();
}

test("browsing protection's options are the machine's settings", async () => {
  await go(page, "Browsing protection");
  const illegal = page.getByRole("switch", { name: "Block illegal websites" });
  await illegal.click();
  await answer(page, "Allow");
  await becomes(() => isOn(illegal), true);
  assert.equal(await host.setting("system", "windows.browsing_protection.block_illegal_websites"), true);
});

test("extensions are reinstalled after the rights were given", async () => {
  await go(page, "Browser extensions");
  await page.getByRole("button", { name: "Reinstall extensions" }).click();
  await answer(page, "Allow");
  await page.getByText("The extensions are installed anew.").waitFor();
  await becomes(() => host.setting("user", "windows.browsing_protection.internal.reinstall_extensions"), 1);
});

test("the clipboard's switch says the opposite of its setting", async () => {
  await go(page, "Banking protection");
  const keep = page.getByRole("switch", { name: "Keep the clipboard" });
  await becomes(() => isOn(keep), false);
  await keep.click();
  await answer(page, "Allow");
  await becomes(() => isOn(keep), true);
  const key = "windows.browsing_protection.banking_protection.clear_clipboard_after_banking_session";
  assert.equal(await host.setting("system", key), false);
});

test("the filter's categories are a draft until they are saved, which a busy store puts off", async () => {
  await go(page, "Web page filter");
  await page.getByRole("radio", { name: "By category" }).check();
  await page.getByRole("searchbox", { name: "Search categories" }).fill("gam");
  await becomes(() => page.getByRole("checkbox").count(), 2);
  await page.getByRole("checkbox", { name: "Gambling" }).uncheck();
  await host.request("store.fault", { function: "OrbStrata_SetBool", code: 170, count: 0 });
  await page.getByRole("button", { name: "Save" }).click();
  await answer(page, "Allow");
  await page.getByRole("alert").getByText("keeps the settings store busy").waitFor();
  assert.equal(await host.setting("user", "common.content.allowed_categories.gambling"), null);
  await host.request("store.fault");
  await page.getByRole("button", { name: "Save" }).click();
  await answer(page, "Allow");
  await becomes(() => host.setting("user", "common.content.allowed_categories.gambling"), false);
  await becomes(() => page.locator(".save-bar").count(), 0);
  assert.equal(await host.setting("user", "windows.browsing_protection.web_content_control.child_mode"), false);
});

test("the wizard sets the filter up for a child", async () => {
  await page.getByRole("button", { name: "Set up the filter" }).click();
  await page.getByRole("radio", { name: "A child" }).check();
  await page.getByRole("button", { name: "Next" }).click();
  await page.getByRole("button", { name: "Finish" }).click();
  await page.getByRole("button", { name: "Save" }).click();
  await answer(page, "Allow");
  await becomes(() => host.setting("user", "windows.browsing_protection.web_content_control.child_mode"), true);
  await becomes(() => page.getByRole("radio", { name: "Children's mode" }).isChecked(), true);
  await becomes(() => page.locator(".save-bar").count(), 0);
});

test("a website is added in the form in which it is stored, edited, removed and put back", async () => {
  await go(page, "Websites");
  const allowed = page.getByRole("region", { name: "Allowed websites" });
  await allowed.getByRole("textbox", { name: "Add a website" }).fill("Bücher.example");
  await allowed.getByText("Stored as xn--bcher-kva.example").waitFor();
  await allowed.getByRole("button", { name: "Add" }).click();
  await answer(page, "Allow");
  await table("Allowed websites").getByText("xn--bcher-kva.example").waitFor();
  await table("Allowed websites").getByText("bücher.example").waitFor();

  await page.getByRole("button", { name: "Edit bücher.example" }).click();
  await page.getByRole("dialog", { name: "Edit website" }).getByRole("textbox").fill("books.example");
  await page.getByRole("dialog").getByRole("button", { name: "Save" }).click();
  await becomes(() => addresses("Allowed websites"), ["books.example"]);

  await page.getByRole("button", { name: "Remove books.example" }).click();
  await becomes(() => host.setting("user", sites), []);
  await page.getByRole("button", { name: "Undo" }).last().click();
  await becomes(() => addresses("Allowed websites"), ["books.example"]);
});

test("what is no address, or is there already, is refused with the reason", async () => {
  const denied = page.getByRole("region", { name: "Denied websites" });
  const address = denied.getByRole("textbox", { name: "Add a website" });
  await address.fill("not an address");
  await address.press("Enter");
  await denied.getByRole("alert").getByText("not an address of a website").waitFor();
  for (const next of ["ads.example", "bets.example", "cards.example"]) {
    await address.fill(next);
    await address.press("Enter"); // before the one before is in the list
  }
  await becomes(() => addresses("Denied websites"), ["ads.example", "bets.example", "cards.example"]);
  await address.fill("ads.example");
  await address.press("Enter");
  await denied.getByRole("alert").getByText("in the list already").waitFor();
});

test("the administrator's websites stay when the list is cleared, and clearing is undone", async () => {
  await host.set("system", sites, "object", [{ url: "school.example", label: "", allowed: true }]);
  await becomes(() => addresses("Allowed websites"), ["books.example", "school.example"]);
  assert.equal(await page.getByRole("button", { name: "Remove school.example" }).count(), 0);
  await page.getByRole("region", { name: "Allowed websites" }).getByRole("button", { name: "Clear list" }).click();
  await becomes(() => addresses("Allowed websites"), ["school.example"]);
  assert.deepEqual(await addresses("Denied websites"), ["ads.example", "bets.example", "cards.example"]);
  await page.getByRole("button", { name: "Undo" }).last().click();
  await becomes(() => addresses("Allowed websites"), ["books.example", "school.example"]);
});

test("twenty thousand websites are scrolled, searched and changed like twenty", async () => {
  const all = Array.from({ length: 20_000 }, (_, i) => ({ url: `site-${i}.example`, label: "", allowed: true }));
  await host.set("user", sites, "object", all);
  const allowed = page.getByRole("region", { name: "Allowed websites" });
  await allowed.getByText("20,001 websites").waitFor(); // with the administrator's one
  assert.equal(await table("Allowed websites").getAttribute("aria-rowcount"), "20002");
  await allowed.getByRole("group").evaluate((list) => (list.scrollTop = list.scrollHeight));
  await table("Allowed websites").getByText("site-9999.example").waitFor();
  assert.ok((await addresses("Allowed websites")).length < 50);
  await allowed.getByRole("searchbox").fill("site-4711.");
  await becomes(() => addresses("Allowed websites"), ["site-4711.example"]);
  await page.getByRole("button", { name: "Remove site-4711.example" }).click();
  await allowed.getByText("20,000 websites").waitFor();
  assert.equal(((await host.setting("user", sites)) as unknown[]).length, 19_999);
  await host.set("user", sites, "object", []);
});

test("hours are painted with the mouse and the keyboard, undone and saved", async () => {
  await go(page, "Time limits");
  await cell("Monday 13:00 to 14:00").dragTo(cell("Tuesday 14:00 to 15:00"));
  for (const name of ["Monday 13:00 to 14:00", "Monday 14:00 to 15:00", "Tuesday 13:00 to 14:00", "Tuesday 14:00 to 15:00"])
    assert.equal(await selected(name), "false", name);
  await cell("Sunday 23:00 to 24:00").focus();
  await page.keyboard.press("Space");
  await page.keyboard.press("Shift+ArrowLeft");
  assert.equal(await selected("Sunday 22:00 to 23:00"), "false");
  await page.keyboard.press("Control+z");
  assert.equal(await selected("Sunday 22:00 to 23:00"), "true");
  assert.equal(await selected("Sunday 23:00 to 24:00"), "false");
  await page.getByRole("rowheader", { name: "Friday" }).getByRole("button").click();
  assert.equal(await selected("Friday 00:00 to 01:00"), "false");
  await page.getByRole("slider", { name: "Hours a day" }).fill("3");
  await page.getByRole("button", { name: "Save" }).click();
  await answer(page, "Allow");
  const ranges = (day: string) => host.setting("user", `common.time.curfew.${day}.ranges`);
  await becomes(() => ranges("monday"), [{ from: 13 * 3600, until: 15 * 3600 }]);
  assert.deepEqual(await ranges("friday"), [{ from: 0, until: 24 * 3600 }]);
  assert.deepEqual(await ranges("sunday"), [{ from: 23 * 3600, until: 24 * 3600 }]);
  assert.equal(await host.setting("user", "common.time.quota.saturday.duration"), 3 * 3600);
});

test("the present minute is marked, and a head's whole hour changes at once", async () => {
  const now = new Date();
  await page.locator(".cell .present").waitFor({ state: "attached" });
  const marked = page.locator(".cell:has(.present)");
  assert.equal(await marked.getAttribute("data-hour"), String(now.getHours()));
  assert.equal(await marked.getAttribute("data-day"), String((now.getDay() + 6) % 7));
  await page.getByRole("columnheader", { name: "05:00" }).getByRole("button").click();
  await becomes(() => page.locator('.cell[data-hour="5"][aria-selected="false"]').count(), 0);
  await page.getByRole("button", { name: "Discard" }).click();
});

test("today's rest follows the settings as other processes change them", async () => {
  await go(page, "Family rules");
  await page.getByText("The time limit is off").waitFor();
  for (const day of ["sunday", "monday", "tuesday", "wednesday", "thursday", "friday", "saturday"])
    host.strata("set", `common.time.quota.${day}.duration`, "0", "--type", "int64");
  host.strata("set", "common.time.quota.enabled", "true");
  host.strata("set", "common.time.enabled", "true");
  await page.getByText("Today's allowance is used up.").waitFor();
  await page.getByText("No time left").waitFor();
});

test("statistics count in the language's plural forms, with a bar for each day", async () => {
  const today = Math.floor(Date.UTC(new Date().getFullYear(), new Date().getMonth(), new Date().getDate()) / 86_400_000) + 2440588;
  const day = (julianDate: number, websitesChecked: number) =>
    ({ julianDate, websitesChecked, bankingSessions: 0, harmfulBlocks: julianDate === today ? 1 : 0, wtsScans: 0, wtsBlocks: 0 });
  await host.set("user", "windows.browsing_protection.internal.statistics.daily_counters", "object", [day(today - 20, 2000), day(today, 1)]);
  await host.request("settle");
  await host.request("strings", { language: "en", values: {} });
  await go(page, "Statistics");
  await page.getByText("2,001", { exact: true }).waitFor();
  await page.getByText("harmful website blocked", { exact: true }).waitFor();
  assert.equal(await page.locator(".chart rect").count(), 30);
  await page.getByRole("radio", { name: "7 days" }).check({ force: true });
  await page.getByText("website checked", { exact: true }).waitFor();
  await page.getByRole("combobox", { name: "Language" }).selectOption("de");
  await page.getByText("Website geprüft", { exact: true }).waitFor();
  await page.getByRole("link", { name: "Hauptseite" }).waitFor();
  assert.equal(await page.locator("html").getAttribute("lang"), "de");
  await page.getByRole("combobox", { name: "Sprache" }).selectOption("en");
  await page.getByText("website checked", { exact: true }).waitFor();
});

test("settings that the plug-in does not follow by itself are shown when another process changes them", async () => {
  await go(page, "Browsing protection");
  const suspicious = page.getByRole("switch", { name: "Block suspicious websites" });
  await becomes(() => isOn(suspicious), true);
  host.strata("--scope", "system", "set", "windows.browsing_protection.block_suspicious_websites", "false");
  await becomes(() => isOn(suspicious), false);
  await go(page, "Web page filter");
  host.strata("set", "windows.browsing_protection.web_content_control.child_mode", "false");
  await becomes(() => page.getByRole("radio", { name: "By category" }).isChecked(), true);
  host.strata("set", "common.content.allowed_categories.travel", "false");
  await page.getByRole("searchbox", { name: "Search categories" }).fill("Travel");
  await becomes(() => page.getByRole("checkbox", { name: "Travel" }).isChecked(), false);
});
