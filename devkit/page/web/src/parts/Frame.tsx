import type { ComponentType } from "preact";
import { useEffect, useRef } from "preact/hooks";
import { connection } from "../connection/Connection";
import { bankingFlyer } from "../model/Banking";
import { attempt } from "../model/Notices";
import { loadPlugIn, plugInRuns, startAgain } from "../model/PlugIn";
import { addressOf, route, routes, type Route } from "../model/Route";
import { blockShown } from "../model/TimeLock";
import type { Panel } from "../panels/Panels";
import { appearance, chooseLanguage, language, languages, text, type Language } from "../text/Text";
import { Button } from "./Button";
import { Icon } from "./Icon";
import { InSight } from "./InSight";
import { Live } from "./Live";
import { Select } from "./Select";

function SuitePages({ shown }: { shown: Route | undefined }) {
  const t = text.value;
  return (
    <nav class="pages" aria-label={t.frame.pages}>
      <ul>
        {routes.map((name) => (
          <li key={name}>
            <a href={addressOf(name)} aria-current={name === shown ? "page" : undefined}>
              <Icon name={name} />
              {t.routes[name]}
            </a>
          </li>
        ))}
      </ul>
    </nav>
  );
}

function DeveloperPanels({ panels, shown }: { panels: readonly Panel[]; shown: Panel | undefined }) {
  return (
    <nav class="pages panels" aria-labelledby="developer" lang="en">
      <h2 id="developer">Developer</h2>
      <ul>
        {panels.map((panel) => (
          <li key={panel.name}>
            <a href={addressOf(panel.name)} aria-current={panel === shown ? "page" : undefined}>{panel.title}</a>
          </li>
        ))}
      </ul>
    </nav>
  );
}

function Preferences() {
  const t = text.value.frame;
  const titles = Object.entries(languages) as [Language, string][];
  const appearances = Object.entries(t.appearances) as [typeof appearance.value, string][];
  const choose = (wanted: Language) => attempt(() => chooseLanguage(wanted));
  return (
    <div class="preferences">
      <Select label={t.language} value={language.value} options={titles} inLanguage onChoose={choose} />
      <Select
        label={t.appearance}
        value={appearance.value}
        options={appearances}
        onChoose={(wanted) => (appearance.value = wanted)}
      />
    </div>
  );
}

function ConnectionBanner() {
  const t = text.value.connection;
  const state = connection.state.value;
  if (state === "connected" && plugInRuns.value) return null;
  const stopped = state === "hangs" || state === "died";
  return (
    <div class={state === "connecting" ? "banner" : "banner bad"} role={state === "connecting" ? "status" : "alert"}>
      <Icon name="warning" />
      <span>{state === "connected" ? t.noPlugIn : t[state]}</span>
      {(state === "connected" || stopped) && (
        <Button onPress={stopped ? startAgain : loadPlugIn}>{stopped ? t.startAgain : t.load}</Button>
      )}
    </div>
  );
}

interface Props {
  pages: Record<Route, ComponentType>;
  panels: readonly Panel[];
}

/// The same around every page and panel. What is below is inert while there is no connection: it would change nothing;
/// and the suite's pages are while their lock covers them, so that a developer still reaches the panels.
export function Frame({ pages, panels }: Props) {
  const t = text.value;
  const panel = panels.find(({ name }) => name === route.value);
  const page = panel ? undefined : (routes.find((name) => name === route.value) ?? "main");
  const Shown = panel?.Panel ?? pages[page ?? "main"];
  const locked = !panel && blockShown.value > 0;
  const main = useRef<HTMLElement>(null);
  const first = useRef(true);

  useEffect(() => {
    document.title = `${panel?.title ?? t.routes[page ?? "main"]} – Veridan`;
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
        <div inert={locked}><SuitePages shown={page} /></div>
        <DeveloperPanels panels={panels} shown={panel} />
        <Preferences />
      </header>
      <main ref={main} id="page-content">
        <ConnectionBanner />
        <InSight onPanel={panel !== undefined} />
        <div
          class={panel ? "page panel" : "page"}
          lang={panel ? "en" : undefined}
          inert={locked || connection.state.value !== "connected"}
        >
          <Shown />
        </div>
      </main>
      <Live locked={locked} />
    </div>
  );
}
