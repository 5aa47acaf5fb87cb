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

export type Route = (typeof routes)[number];

/// The address is #TOKEN/ROUTE: nothing of it is ever sent to a server.
function parse(): { token: string; route: Route } {
  const [token = "", name] = location.hash.slice(1).split("/");
  return { token, route: routes.find((route) => route === name) ?? "main" };
}

export const token = signal(parse().token);
export const route = signal<Route>(parse().route);

export function addressOf(target: Route): string {
  return target === "main" ? `./#${token.value}` : `./#${token.value}/${target}`;
}

addEventListener("hashchange", () => {
  const now = parse();
  token.value = now.token;
  route.value = now.route;
});
