import { after, test } from "node:test";
import { becomes, go, openPage } from "../support/Browser";
import { Host } from "../support/Host";

const hosts: Host[] = [];
async function start(load = true): Promise<Host> {
  const host = await Host.start({ load });
  hosts.push(host);
  return host;
}
after(() => Promise.all(hosts.map((host) => host.end())));

test("a connection that was lost comes back by itself with the state as it is", async () => {
  const host = await start();
  const page = await openPage("about:blank");
  let cut: () => Promise<void> = async () => undefined;
  let refusing = false;
  await page.routeWebSocket(/\/socket$/, (client) => {
    if (refusing) return void client.close({ code: 1013 });
    const server = client.connectToServer();
    cut = async () => {
      refusing = true;
      await server.close();
      await client.close({ code: 1013 });
    };
  });
  await page.goto(host.address);
  await page.getByRole("heading", { name: "You are protected" }).waitFor();
  await cut();
  await page.getByRole("alert").getByText("The connection to the host is lost.").waitFor();
  await host.set("system", "windows.browsing_protection.enabled", "bool", false);
  refusing = false;
  await page.getByRole("heading", { name: "You are not protected" }).waitFor();
  await becomes(() => page.getByRole("alert").count(), 0);
  await page.context().close();
});

test("a host without a plug-in is shown as such, and the page loads it", async () => {
  const host = await start(false);
  const page = await openPage(host.address);
  await page.getByText("The plug-in is not loaded").waitFor();
  await page.getByRole("button", { name: "Load the plug-in" }).click();
  await page.getByRole("heading", { name: "You are protected" }).waitFor();
  await host.request("unload");
  await page.getByText("The plug-in is not loaded").waitFor();
  await page.context().close();
});

test("several pages show the same, and each may change it", async () => {
  const host = await start();
  const pages = await Promise.all([1, 2, 3].map(() => openPage(host.address)));
  await go(pages[0]!, "Banking protection");
  await pages[0]!.getByRole("switch", { name: "Leave other connections open" }).click();
  await pages[1]!.getByRole("dialog", { name: "Administrator rights" }).getByRole("button", { name: "Allow" }).click();
  for (const page of pages) {
    await page.getByRole("dialog").waitFor({ state: "detached" });
    await go(page, "Banking protection");
    await becomes(() => page.getByRole("switch", { name: "Leave other connections open" }).getAttribute("aria-checked"), "true");
    await page.context().close();
  }
});
