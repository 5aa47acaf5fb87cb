import { after, before } from "node:test";
import type { Page } from "playwright-core";
import { openPage } from "./Browser";
import { Host } from "./Host";

/// A host and a page of it, for all tests of the file that takes them from here.
export let host: Host;
export let page: Page;

before(async () => {
  host = await Host.start();
  page = await openPage(host.address);
});
after(() => host.end());
