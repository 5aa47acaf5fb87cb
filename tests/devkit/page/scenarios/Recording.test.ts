import { execFileSync } from "node:child_process";
import { mkdtempSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { answer, becomes, go, isOn, openPage } from "../support/Browser";
import { Host } from "../support/Host";

let host: Host;
const folder = mkdtempSync(join(tmpdir(), "veridan-recording-"));
before(async () => {
  host = await Host.start();
});
after(async () => {
  await host.end();
  rmSync(folder, { recursive: true });
});

test("what is done on the page is recorded, downloaded and replayed", async () => {
  const page = await openPage(host.address);
  await go(page, "Recording");
  await page.getByRole("button", { name: "Record", exact: true }).click();
  await page.getByRole("button", { name: "End recording" }).waitFor();
  await go(page, "Main page");
  for (const button of ["Refuse", "Allow"] as const) {
    await page.getByRole("switch", { name: "Time limit", exact: true }).click();
    await answer(page, button);
  }
  await becomes(() => isOn(page.getByRole("switch", { name: "Time limit", exact: true })), true);
  await becomes(() => host.setting("user", "common.time.enabled"), true);
  await go(page, "Recording");
  await page.getByRole("button", { name: "End recording" }).click();
  const download = page.waitForEvent("download");
  await page.getByRole("link", { name: "Download" }).click();
  const file = join(folder, "recording.jsonl");
  await (await download).saveAs(file);
  execFileSync(process.env["VERIDAN_HOST"]!, ["--replay", file]); // throws with what differs
});
