import type { ComponentChildren } from "preact";
import { useId, useState } from "preact/hooks";
import { functions } from "../model/Faults";
import { attempt } from "../model/Notices";
import {
  bringStoreBack, carryOut, closeBankingSession, countersKey, countVisits, enforce, lock, loseStore, openBankingSession,
  release, warn, type Request,
} from "../model/Service";
import { settingValue } from "../model/Settings";
import { knownSettings, scopes } from "../model/StoreTable";
import { Field, named } from "../parts/Field";
import { Card, Page } from "../parts/Page";
import { Select } from "../parts/Select";

type Deeds = Readonly<Record<string, () => readonly Request[]>>;

/// Buttons, and what a script sends for each.
function Deed({ title, deeds, children }: { title: string; deeds: Deeds; children?: ComponentChildren }) {
  const names = Object.keys(deeds);
  const [shown, setShown] = useState(names[0]!);
  const id = useId();
  return (
    <Card title={title} class="deed">
      {children && <div class="fields">{children}</div>}
      <div class="buttons">
        {names.map((name) => (
          <button
            key={name}
            type="button"
            class="button"
            aria-describedby={id}
            onFocus={() => setShown(name)}
            onClick={() => {
              setShown(name); // not every browser gives the focus to what is clicked
              attempt(() => carryOut(deeds[name]!()));
            }}
          >
            {name}
          </button>
        ))}
      </div>
      <details>
        <summary>As a script sends it: {shown}</summary>
        <pre id={id} class="code" tabIndex={0}>
          {deeds[shown]!().map((request, i) => `${JSON.stringify({ id: i + 1, ...request })}\n`)}
        </pre>
      </details>
    </Card>
  );
}

const two = (number: number) => String(number).padStart(2, "0");
const timeText = (time: Date) => `${two(time.getHours())}:${two(time.getMinutes())}`;
const dateText = (time: Date) => `${time.getFullYear()}-${two(time.getMonth() + 1)}-${two(time.getDate())}`;

/// The next time that a clock shows this; nothing for no time.
function next(time: string): Date | undefined {
  const [hours, minutes] = time.split(":").map(Number);
  if (hours === undefined || minutes === undefined) return undefined;
  const at = new Date();
  at.setHours(hours, minutes, 0, 0);
  if (at.getTime() <= Date.now()) at.setDate(at.getDate() + 1);
  return at;
}

function TimeLock() {
  const [minutes, setMinutes] = useState("5");
  const [until, setUntil] = useState(timeText(new Date(Date.now() + 3_600_000)));
  return (
    <Deed
      title="Time lock"
      deeds={{ Warn: () => warn(Number(minutes)), Lock: () => lock(next(until)), Release: release }}
    >
      <Field label="Minutes left" type="number" min={1} value={minutes} onType={setMinutes} />
      <Field label="Locked until (empty: released by hand)" type="time" value={until} onType={setUntil} />
    </Deed>
  );
}

function Banking() {
  const [name, setName] = useState("veridan-banking-closed");
  return (
    <Deed
      title="Banking session"
      deeds={{ "Open session": () => openBankingSession(name), "Close session": closeBankingSession }}
    >
      <Field label="Named event for its end" value={name} onType={setName} />
    </Deed>
  );
}

function Visits() {
  const [visits, setVisits] = useState("25");
  const [day, setDay] = useState(dateText(new Date()));
  return (
    <Deed
      title="Visits of a day"
      deeds={{
        "Count visits": () =>
          countVisits(settingValue("user", countersKey, []), new Date(`${day}T12:00`), Number(visits)),
      }}
    >
      <Field label="Visits" type="number" min={0} value={visits} onType={setVisits} />
      <Field label="Day" type="date" value={day} onType={setDay} />
    </Deed>
  );
}

function Policy() {
  const [scope, setScope] = useState<string>("user");
  const [key, setKey] = useState("common.content.enabled");
  return (
    <Deed
      title="Policy"
      deeds={{ Enforce: () => enforce(scope, key, true), "Enforce no longer": () => enforce(scope, key, false) }}
    >
      <Select label="Scope" value={scope} options={named(scopes)} onChoose={setScope} />
      <Field label="Setting" value={key} onType={setKey} suggestions={[...knownSettings().keys()].map((name) => [name])} />
    </Deed>
  );
}

const lead =
  "What the suite's service does beside the plug-in. Each button sends a few requests, which a script can send as well.";

export function ServicePanel() {
  const store = functions.value.store;
  return (
    <Page title="Service" lead={lead}>
      <div class="columns wide">
        <TimeLock />
        <Banking />
        <Visits />
        <Policy />
        <Deed
          title="Settings store"
          deeds={{ "Lose the store": () => loseStore(store), "Bring it back": () => bringStoreBack(store) }}
        />
      </div>
    </Page>
  );
}
