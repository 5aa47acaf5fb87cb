import assert from "node:assert/strict";
import { after, before, test } from "node:test";
import type { Page } from "playwright-core";
import { answer, becomes, go, openPage } from "../support/Browser";
import { Host } from "../support/Host";

const trigger = "windows.browsing_protection.internal.time_limit_trigger";
const session = "windows.browsing_protection.internal.banking_session_open";

let host: Host;
let page: Page;
before(async () => {
  host = await Host.start();
  page = await openPage(host.address);
  await page.getByRole("heading", { name: "You are protected" }).waitFor();
});
after(() => host.end());

const block = () => page.getByRole("dialog", { name: "Computer time is over" });

test("a warning comes as a notification with its buttons", async () => {
  await host.set("user", trigger, "int32", 1);
  const flyer = page.getByRole("region", { name: "Computer time ends in 1 minute" });
  await flyer.getByText("A parent can extend the time.").waitFor();
  await flyer.getByRole("button", { name: "Close" }).click();
  await flyer.waitFor({ state: "detached" });
});

test("a lock covers the page, is shown again and counted, and an extension ends it", async () => {
  await host.set("user", trigger, "int32", -1);
  await block().getByText("You cannot use the computer now.").waitFor();
  await page.keyboard.press("Escape");
  await page.keyboard.press("Escape");
  await block().getByText("Shown again once.").waitFor();
  assert.ok(await block().isVisible());

  await block().getByRole("button", { name: "Extend time" }).click();
  const extend = page.getByRole("dialog", { name: "Extend the time" });
  await extend.getByRole("radio", { name: "30 minutes" }).check();
  await extend.getByRole("button", { name: "Extend time" }).click();
  await answer(page, "Refuse");
  await block().waitFor();
  await block().getByRole("button", { name: "Extend time" }).click();
  await extend.getByRole("radio", { name: "30 minutes" }).check();
  await extend.getByRole("button", { name: "Extend time" }).click();
  await answer(page, "Allow");
  await block().waitFor({ state: "detached" });
  await becomes(() => host.setting("system", "windows.browsing_protection.internal.time_limit_extension"), 30);
});

test("a page that is opened while the computer is locked shows it", async () => {
  const until = Math.floor(Date.now() / 1000) + 90 * 60;
  await host.set("user", trigger, "int32", -until);
  await block().getByText("You can use the computer again").waitFor();
  const second = await openPage(host.address);
  await second.getByRole("dialog", { name: "Computer time is over" }).waitFor();
  await host.set("user", trigger, "int32", 0);
  await second.getByRole("dialog").waitFor({ state: "detached" });
  await block().waitFor({ state: "detached" });
  await second.context().close();
});

test("a banking session has its flyer and the browser's border until it is ended", async () => {
  await host.set("user", "windows.browsing_protection.internal.open_banking_flyer_expanded", "bool", false);
  await host.set("system", "windows.browsing_protection.internal.banking_close_event", "string", "veridan-page-test");
  await host.request("event.create", { name: "veridan-page-test" });
  await host.set("system", session, "bool", true);
  const flyer = page.getByRole("complementary", { name: "Banking protection is on" });
  await flyer.getByText("This is a secure banking session.").waitFor();
  assert.equal(await page.locator(".frame.banking").count(), 1);
  await flyer.getByRole("button", { name: "Hide details" }).click();
  await flyer.getByText("This is a secure banking session.").waitFor({ state: "detached" });
  await go(page, "Banking protection");
  await page.getByText("A banking session is open.").waitFor();
  await flyer.getByRole("button", { name: "End session" }).click();
  await flyer.waitFor({ state: "detached" });
  assert.deepEqual(await host.request("event.state", { name: "veridan-page-test" }), { signalled: true });
  assert.equal(await host.setting("system", session), false);
});

test("an address that the plug-in opens is told, and the desktop opens nothing", async () => {
  await go(page, "Browsing protection");
  await page.getByRole("button", { name: "Open the extension store" }).click();
  await page.getByText("The plug-in opened https://").waitFor();
  assert.equal(((await host.request("urls")) as string[]).length, 1);
});
