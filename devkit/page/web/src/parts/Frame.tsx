import type { ComponentType } from "preact";
import { useEffect, useRef } from "preact/hooks";
import { connection } from "../connection/Connection";
import { bankingFlyer } from "../model/Banking";
import { attempt } from "../model/Notices";
import { loadPlugIn, plugInRuns } from "../model/PlugIn";
import { addressOf, route, routes, type Route } from "../model/Route";
import { appearance, chooseLanguage, language, languages, text, type Language } from "../text/Text";
import { Icon } from "./Icon";
import { Live } from "./Live";

function Navigation() {
  const t = text.value;
  return (
    <nav class="pages" aria-label={t.frame.pages}>
      <ul>
        {routes.map((name) => (
          <li key={name}>
            <a href={addressOf(name)} aria-current={name === route.value ? "page" : undefined}>
              <Icon name={name} />
              {t.routes[name]}
            </a>
          </li>
        ))}
      </ul>
    </nav>
  );
}

function Preferences() {
  const t = text.value.frame;
  return (
    <div class="preferences">
      <label>
        {t.language}
        <select
          value={language.value}
          onChange={(event) => {
            const wanted = event.currentTarget.value as Language;
            attempt(() => chooseLanguage(wanted));
          }}
        >
          {Object.entries(languages).map(([name, title]) => (
            <option key={name} value={name} lang={name}>
              {title}
            </option>
          ))}
        </select>
      </label>
      <label>
        {t.appearance}
        <select
          value={appearance.value}
          onChange={(event) => (appearance.value = event.currentTarget.value as typeof appearance.value)}
        >
          {Object.entries<string>(t.appearances).map(([name, title]) => (
            <option key={name} value={name}>
              {title}
            </option>
          ))}
        </select>
      </label>
    </div>
  );
}

function ConnectionBanner() {
  const t = text.value.connection;
  const state = connection.state.value;
  if (state === "connected" && plugInRuns.value) return null;
  return (
    <div class={state === "connecting" ? "banner" : "banner bad"} role={state === "connecting" ? "status" : "alert"}>
      <Icon name="warning" />
      <span>{state === "connected" ? t.noPlugIn : t[state]}</span>
      {state === "connected" && (
        <button type="button" class="button" onClick={() => attempt(loadPlugIn)}>
          {t.load}
        </button>
      )}
    </div>
  );
}

/// The same around every page. What is below is inert while there is no connection: it would change nothing.
export function Frame({ pages }: { pages: Record<Route, ComponentType> }) {
  const t = text.value;
  const Shown = pages[route.value];
  const main = useRef<HTMLElement>(null);
  const first = useRef(true);

  useEffect(() => {
    document.title = `${t.routes[route.value]} – Veridan`;
    document.documentElement.lang = language.value;
    document.documentElement.dataset["appearance"] = appearance.value;
  });
  useEffect(() => {
    if (!first.current) main.current?.querySelector("h1")?.focus();
    first.current = false;
    scrollTo(0, 0);
  }, [route.value]);

  return (
    <div class={bankingFlyer.value === "closed" ? "frame" : "frame banking"}>
      <a
        class="skip"
        href="#page-content"
        onClick={(event) => {
          event.preventDefault();
          main.current?.querySelector("h1")?.focus();
        }}
      >
        {t.frame.skip}
      </a>
      <header class="side">
        <p class="brand">
          <Icon name="browsing-protection" />
          Veridan
        </p>
        <Navigation />
        <Preferences />
      </header>
      <main ref={main} id="page-content">
        <ConnectionBanner />
        <div class="page" inert={connection.state.value !== "connected"}>
          <Shown />
        </div>
      </main>
      <Live />
    </div>
  );
}
