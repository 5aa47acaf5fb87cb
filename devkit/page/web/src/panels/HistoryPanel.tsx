import { useState } from "preact/hooks";
import type { Change, ChangeFilter } from "../logic/ChangeLog";
import { brief } from "../logic/JsonText";
import { useFeed } from "../model/Feed";
import { historyFilter, HistoryView } from "../model/HistoryView";
import { addressOf } from "../model/Route";
import { variableFilter } from "../model/VariableTree";
import { Differences } from "../parts/Differences";
import { Card, Page } from "../parts/Page";
import { Rows } from "../parts/Rows";
import { FilterField, Hold, Tools } from "../parts/Tools";

const heads = ["#", "Time", "By", "Variable", "Value"];
const actors = { all: "page and plug-in", page: "page", plugin: "plug-in" } as const;

function time({ seen }: Change): string {
  return seen === undefined ? "" : new Date(seen).toISOString().slice(11, 23);
}

function what({ kind, value }: Change): string {
  return kind === "set" ? brief(value) : `fired${value === null ? "" : ` with ${brief(value)}`}`;
}

function Cells({ view, change }: { view: HistoryView; change: Change }) {
  const { seq, by, name, depth } = change;
  return (
    <>
      <td>{seq}</td>
      <td>{time(change)}</td>
      <td>{actors[by]}</td>
      <td>
        <div class="tree" style={{ "--depth": depth }}>
          <button type="button" class="quiet code" onClick={() => view.select(change)}>
            {name}
          </button>
        </div>
      </td>
      <td class="code">{what(change)}</td>
    </>
  );
}

function Links({ view, title, changes }: { view: HistoryView; title: string; changes: readonly Change[] }) {
  return (
    <section aria-label={title}>
      <h3>{title}</h3>
      {changes.length === 0 && <p class="faint">Nothing that is kept.</p>}
      <ul>
        {changes.map((change) => (
          <li key={change.seq}>
            <button type="button" class="quiet code" onClick={() => view.select(change)}>
              #{change.seq} {change.name}
            </button>{" "}
            <span class="code">{what(change)}</span>
          </li>
        ))}
      </ul>
    </section>
  );
}

function Selected({ view, change }: { view: HistoryView; change: Change }) {
  view.version.value;
  const cause = view.log.causeOf(change);
  return (
    <Card title={`#${change.seq} ${change.name}`} class="selected">
      {change.kind === "set" && <Differences before={view.log.before(change)?.value} now={change.value} />}
      <div class="columns">
        <Links view={view} title="Caused by" changes={cause ? [cause] : []} />
        <Links view={view} title="What it caused" changes={view.log.effectsOf(change)} />
      </div>
      <a class="more" href={addressOf("variables")} onClick={() => (variableFilter.value = change.name)}>
        The variable as it is now
      </a>
    </Card>
  );
}

export function HistoryPanel() {
  const [view] = useState(() => new HistoryView());
  useFeed(view.feed);
  view.version.value;
  const { by, name } = historyFilter.value;
  const selected = view.selected.value;
  return (
    <Page title="History" lead="What pages and plug-in did with the variables, the newest last.">
      <Tools>
        <FilterField label="Filter by variable" value={name} onFilter={(typed) => view.filter({ name: typed })} />
        <select
          aria-label="By"
          value={by}
          onChange={(event) => view.filter({ by: event.currentTarget.value as ChangeFilter["by"] })}
        >
          {Object.entries(actors).map(([value, title]) => (
            <option key={value} value={value}>
              {title}
            </option>
          ))}
        </select>
        <span class="faint">
          {view.log.shown.length.toLocaleString("en")} of {view.log.changes.length.toLocaleString("en")}
        </span>
        <Hold feed={view.feed} />
      </Tools>
      <Card class="history">
        <Rows
          label="History"
          heads={heads}
          rows={view.log.shown}
          keyOf={(change) => change.seq}
          render={(change) => <Cells view={view} change={change} />}
          none="No change matches."
          rowHeight={32}
          most={18}
          follow
          marked={selected}
        />
      </Card>
      {selected && <Selected view={view} change={selected} />}
    </Page>
  );
}
