import assert from "node:assert/strict";
import { after } from "node:test";
import { chromium, type Browser, type BrowserContextOptions, type Locator, type Page } from "playwright-core";

let started: Promise<Browser> | undefined;

function browser(): Promise<Browser> {
  started ??= chromium.launch({
    executablePath: process.env["VERIDAN_CHROMIUM"] ?? "/usr/bin/chromium",
    args: process.getuid?.() === 0 ? ["--no-sandbox"] : [],
  });
  return started;
}

after(async () => (await started)?.close());

/// A page in a context of its own. What it reports as an error ends the test that looks at `problems`.
export async function openPage(address: string, options: BrowserContextOptions = {}): Promise<Page> {
  const context = await (await browser()).newContext({ viewport: { width: 1200, height: 900 }, ...options });
  context.setDefaultTimeout(10_000);
  const page = await context.newPage();
  page.on("pageerror", (error) => {
    throw error;
  });
  await page.goto(address);
  return page;
}

/// Waits for what becomes true by itself, and says what was there instead when it does not.
export async function becomes<Value>(read: () => Promise<Value> | Value, wanted: Value): Promise<void> {
  const end = Date.now() + 10_000;
  let found = await read();
  while (JSON.stringify(found) !== JSON.stringify(wanted) && Date.now() < end) {
    await new Promise((resolve) => setTimeout(resolve, 10));
    found = await read();
  }
  assert.deepEqual(found, wanted);
}

export async function go(page: Page, name: string): Promise<void> {
  await page.locator(".page:not([inert])").waitFor();
  await page.getByRole("link", { name, exact: true }).click();
  await page.getByRole("heading", { name, level: 1 }).waitFor();
}

export async function answer(page: Page, button: "Allow" | "Refuse"): Promise<void> {
  await page.getByRole("dialog", { name: "Administrator rights" }).getByRole("button", { name: button }).click();
}

export async function isOn(control: Locator): Promise<boolean> {
  return (await control.getAttribute("aria-checked")) === "true";
}
