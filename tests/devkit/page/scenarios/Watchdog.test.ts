import assert from "node:assert/strict";
import { after, test } from "node:test";
import type { Page } from "playwright-core";
import { becomes, openPage } from "../support/Browser";
import { Host } from "../support/Host";
import { Wire } from "../support/Wire";

const hosts: Host[] = [];
after(() => Promise.all(hosts.map((host) => host.end())));

/// A host and its page, with a setting that was saved.
async function start(): Promise<[Host, Page]> {
  const host = await Host.start({ arguments: ["--page-may-quit"] });
  hosts.push(host);
  const page = await openPage(host.address);
  await host.set("user", "common.content.enabled", "bool", true);
  await showsWhatWasSaved(page);
  return [host, page];
}

async function showsWhatWasSaved(page: Page): Promise<void> {
  await page.getByRole("heading", { name: "You are protected" }).waitFor();
  await becomes(() => page.getByRole("switch", { name: "Web page filter" }).getAttribute("aria-checked"), "true");
  await becomes(() => page.getByRole("alert").count(), 0);
}

/// The host that goes on is nobody's child any more.
async function endSuccessor(host: Host, page: Page): Promise<void> {
  await page.context().close();
  const wire = await Wire.open(host.port);
  wire.send(JSON.stringify({ id: 1, op: "hello", token: host.token }));
  wire.send('{"id":2,"op":"quit"}');
  await wire.closed;
}

const alert = (page: Page, text: string) => page.getByRole("alert").getByText(text).waitFor();
const startAgain = (page: Page) => page.getByRole("button", { name: "Start again" }).click();

test("a host that dies is told of, and goes on when the page asks for it", async () => {
  const [host, page] = await start();
  await host.kill("SIGSEGV");
  await alert(page, "ended unexpectedly");
  const late = await openPage(host.address);
  await alert(late, "ended unexpectedly");
  await startAgain(page);
  for (const shown of [page, late]) await showsWhatWasSaved(shown);
  await late.context().close();
  await endSuccessor(host, page);
});

test("a host that hangs is told of until it answers again, or is replaced when the page asks for it", async () => {
  const [[one, first], [two, second]] = await Promise.all([start(), start()]);
  for (const host of [one, two]) process.kill(host.pid, "SIGSTOP");
  for (const page of [first, second]) await alert(page, "has not answered");
  process.kill(one.pid, "SIGCONT");
  await showsWhatWasSaved(first);
  assert.equal(await one.setting("user", "common.content.enabled"), true);
  await startAgain(second);
  await showsWhatWasSaved(second);
  await endSuccessor(two, second);
});
