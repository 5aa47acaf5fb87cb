import assert from "node:assert/strict";
import { test } from "node:test";
import { answer, becomes, isOn } from "../support/Browser";
import { host, page } from "../support/Scene";

const control = (name: string) => page.getByRole("switch", { name, exact: true });

test("a move of a switch waits for the administrator's answer and is saved", async () => {
  const filter = control("Web page filter");
  await filter.click();
  await page.getByRole("dialog", { name: "Administrator rights" }).waitFor();
  assert.equal(await host.setting("user", "common.content.enabled"), null);
  await answer(page, "Allow");
  await becomes(() => isOn(filter), true);
  await becomes(() => host.setting("user", "common.content.enabled"), true);
  await page.getByText("the web page filter or the time limit is on").waitFor();
});

test("refused rights change nothing, and the page says so", async () => {
  const limit = control("Time limit");
  await limit.click();
  await answer(page, "Refuse");
  await page.getByRole("alert").getByText("Nothing was changed").waitFor();
  assert.equal(await isOn(limit), false);
  assert.equal(await host.setting("user", "common.time.enabled"), null);
  await page.getByRole("button", { name: "Dismiss" }).click();
});

test("each switch moves its own setting", async () => {
  const settings: [name: string, scope: string, key: string, on: boolean][] = [
    ["Browsing protection", "system", "windows.browsing_protection.enabled", false],
    ["Banking protection", "system", "windows.browsing_protection.banking_protection.enabled", false],
    ["Time limit", "user", "common.time.enabled", true],
    ["Safe search", "user", "windows.browsing_protection.search_result_filter.enabled", true],
  ];
  for (const [name, scope, key, on] of settings) {
    await control(name).click();
    await answer(page, "Allow");
    await becomes(() => isOn(control(name)), on);
    await becomes(() => host.setting(scope, key), on);
  }
  await page.getByRole("heading", { name: "You are not protected" }).waitFor();
});

test("what another process changes is shown", async () => {
  host.strata("--scope", "system", "set", "windows.browsing_protection.enabled", "true");
  await becomes(() => isOn(control("Browsing protection")), true);
  await page.getByRole("heading", { name: "You are protected" }).waitFor();
});

test("an enforced switch is locked and says by whom", async () => {
  host.strata("constrain", "common.content.enabled", "enforced");
  const filter = control("Web page filter");
  await becomes(() => filter.getAttribute("aria-disabled"), "true");
  await filter.locator("..").getByText("Set by the administrator").waitFor();
  await filter.click({ force: true });
  assert.equal(await page.getByRole("dialog").count(), 0);
});

test("an answer that somebody else gives closes the dialog", async () => {
  await host.request("watch", { topic: "elevation" });
  await control("Safe search").click();
  await page.getByRole("dialog", { name: "Administrator rights" }).waitFor();
  const prompt = host.events.at(-1)?.["prompt"] ?? null;
  await host.request("elevation.answer", { prompt, accept: false });
  await page.getByRole("dialog").waitFor({ state: "detached" });
});
