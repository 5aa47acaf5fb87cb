// Takes the pictures for scripts/page-pictures: node page-pictures.mjs HOST DATA-FOLDER TARGET
import { spawn } from "node:child_process";
import { once } from "node:events";
import { createRequire } from "node:module";
import { createInterface } from "node:readline";

const { chromium } = createRequire(new URL("../devkit/page/web/package.json", import.meta.url))("playwright-core");
const [host, folder, target] = process.argv.slice(2);

const child = spawn(host, ["--jsonl", "--page", "--data", folder], { stdio: ["pipe", "pipe", "inherit"] });
const lines = createInterface({ input: child.stdout });
const address = JSON.parse((await once(lines, "line"))[0]).page;
child.stdin.write('{"id": 1, "op": "load"}\n');
await once(lines, "line");

const browser = await chromium.launch({
  executablePath: process.env.VERIDAN_CHROMIUM ?? "/usr/bin/chromium",
  args: process.getuid() === 0 ? ["--no-sandbox"] : [],
});
for (const [name, route, colorScheme] of [
  ["main", "", "light"],
  ["time-limits", "/time-limits", "light"],
  ["family-rules", "/family-rules", "light"],
  ["statistics", "/statistics", "light"],
  ["websites", "/websites", "dark"],
  ["history", "/history", "light"],
]) {
  const page = await browser.newPage({ viewport: { width: 1120, height: 780 }, colorScheme });
  await page.goto(address + route);
  await page.locator(".page:not([inert])").waitFor();
  await page.evaluate(() => document.fonts.ready.then(() => new Promise((done) => setTimeout(done, 400))));
  await page.screenshot({ path: `${target}/${name}.png` });
  await page.close();
}
await browser.close();
child.kill();
