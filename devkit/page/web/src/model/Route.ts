import { signal } from "@preact/signals";

export const routes = [
  "main",
  "browsing-protection",
  "browser-extensions",
  "banking-protection",
  "web-page-filter",
  "websites",
  "time-limits",
  "family-rules",
  "statistics",
] as const;

/// The suite's pages; the panels beside them are named where they are listed.
export type Route = (typeof routes)[number];

/// The address is #TOKEN/NAME: nothing of it is ever sent to a server.
function parse(): { token: string; name: string } {
  const [token = "", name = "main"] = location.hash.slice(1).split("/");
  return { token, name };
}

export const token = signal(parse().token);
/// The name of a page or panel, as it stands in the address.
export const route = signal(parse().name);

export function addressOf(name: string): string {
  return name === "main" ? `./#${token.value}` : `./#${token.value}/${name}`;
}

addEventListener("hashchange", () => {
  const now = parse();
  token.value = now.token;
  route.value = now.name;
});
