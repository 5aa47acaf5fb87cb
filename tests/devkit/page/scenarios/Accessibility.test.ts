import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { after, before, test } from "node:test";
import type { Page } from "playwright-core";
const axeFile = process.env["VERIDAN_AXE"]!;
import { go, openPage } from "../support/Browser";
import { Host } from "../support/Host";

const names = [
  "Variables", "History", "Store", "Log", "Activity", "Faults", "Service", "Recording", "Main page",
  "Browsing protection", "Browser extensions", "Banking protection", "Web page filter", "Websites", "Time limits",
  "Family rules", "Statistics",
];

let host: Host;
before(async () => {
  host = await Host.start();
  await host.set("user", "windows.browsing_protection.web_content_control.child_mode", "bool", false);
  const site = (url: string) => ({ url, label: "", allowed: true });
  await host.set("user", "windows.browsing_protection.internal.sites.list", "object", [site("xn--bcher-kva.example")]);
  await host.set("system", "windows.browsing_protection.internal.sites.list", "object", [site("school.example")]);
  await host.set("system", "windows.browsing_protection.enabled", "bool", false);
  await host.request("store.fault", { function: "OrbStrata_SetBool", key: "no.such.setting", code: 5, count: 0 });
});
after(() => host.end());

interface Violation {
  id: string;
  nodes: { html: string }[];
}

/// Colours are all that the other scheme can make differ.
async function violations(page: Page, rules: readonly string[]): Promise<string[]> {
  const options = JSON.stringify({ resultTypes: ["violations"], ...(rules.length > 0 && { runOnly: rules }) });
  const found = (await page.evaluate(`axe.run(${options}).then((result) => result.violations)`)) as Violation[];
  return found.map(({ id, nodes }) => `${id}: ${nodes.map((node) => node.html.slice(0, 160)).join(" | ")}`);
}

for (const [colorScheme, rules] of [["light", []], ["dark", ["color-contrast"]]] as const) {
  test(`every page is accessible in its ${colorScheme} colours and fits 360 pixels`, async () => {
    const page = await openPage(host.address, { colorScheme, bypassCSP: true, viewport: { width: 360, height: 740 } });
    await page.addScriptTag({ content: readFileSync(axeFile, "utf8") });
    for (const name of names) {
      await go(page, name);
      assert.deepEqual(await violations(page, rules), [], name);
      assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= innerWidth), `${name} is wider`);
    }
    await host.set("user", "windows.browsing_protection.internal.time_limit_trigger", "int32", -1);
    await page.getByRole("dialog", { name: "Computer time is over" }).waitFor();
    assert.deepEqual(await violations(page, rules), []);
    await host.set("user", "windows.browsing_protection.internal.time_limit_trigger", "int32", 5);
    await page.getByRole("region", { name: "Computer time ends in 5 minutes" }).waitFor();
    assert.deepEqual(await violations(page, rules), []);
    await page.getByRole("button", { name: "Close" }).click();
    await host.set("user", "windows.browsing_protection.internal.time_limit_trigger", "int32", 0);
    await page.context().close();
  });
}

test("the whole week can be reached with one tab stop, and the focus is visible", async () => {
  const page = await openPage(host.address);
  await go(page, "Time limits");
  assert.equal(await page.locator('.week [tabindex="0"]').count(), 1);
  await page.locator('.week [tabindex="0"]').focus();
  await page.keyboard.press("Control+End");
  const focused = await page.evaluate(() => {
    const style = getComputedStyle(document.activeElement!);
    return [document.activeElement!.getAttribute("aria-label"), style.outlineStyle];
  });
  assert.deepEqual(focused, ["Sunday 23:00 to 24:00", "solid"]);
  await page.context().close();
});
