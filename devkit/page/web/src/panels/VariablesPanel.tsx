import { useState } from "preact/hooks";
import { brief } from "../logic/JsonText";
import type { TreeRow } from "../logic/IdTree";
import { useFeed } from "../model/Feed";
import { historyFilter } from "../model/HistoryView";
import { attempt } from "../model/Notices";
import { addressOf } from "../model/Route";
import { fire, setVariable } from "../model/Variables";
import {
  pinnedBranches, toggleBranch, togglePin, variableFilter, VariableTree, type Variable,
} from "../model/VariableTree";
import { Differences } from "../parts/Differences";
import { JsonEditor } from "../parts/JsonEditor";
import { Card, Page } from "../parts/Page";
import { Rows } from "../parts/Rows";
import { FilterField, Hold, Tools } from "../parts/Tools";

type Row = TreeRow<Variable>;

const heads = ["Variable", "Value", "Type", "Owner", "Subscribers", "Writes", "Triggers"];

function Cells({ tree, row: { branch, depth, pinned } }: { tree: VariableTree; row: Row }) {
  const flashes = tree.flashesOf(branch).value;
  const state = branch.leaf?.state.value;
  const isBranch = branch.children.length > 0;
  const label = pinned && depth === 0 ? branch.path : branch.label;
  return (
    <>
      <td>
        <div class="tree" style={{ "--depth": depth }}>
          <i key={flashes} class={flashes > 0 ? "flash" : undefined} />
          <button
            type="button"
            class="quiet code"
            aria-expanded={isBranch ? tree.isOpen(branch.path) : undefined}
            onClick={() => (branch.leaf ? (tree.selected.value = branch.leaf) : toggleBranch(branch.path))}
          >
            {label}
          </button>
          {isBranch && <span class="faint">{branch.shown}</span>}
          {isBranch && (
            <button
              type="button"
              class="quiet"
              aria-pressed={pinnedBranches.value.includes(branch.path)}
              aria-label={`Pin ${branch.path}`}
              onClick={() => togglePin(branch.path)}
            >
              Pin
            </button>
          )}
        </div>
      </td>
      <td class="code">{brief(state?.value)}</td>
      <td>{state?.type}</td>
      <td>{state?.owner}</td>
      <td>{state?.subscribers}</td>
      <td>{state?.writes}</td>
      <td>{state?.triggers}</td>
    </>
  );
}

function Selected({ variable: { id, state } }: { variable: Variable }) {
  const { value, before } = state.value;
  return (
    <Card title={id} class="selected">
      <JsonEditor key={id} label="Value" value={value} action="Write" onChange={(next) => attempt(() => setVariable(id, next))}>
        <button type="button" class="button" onClick={() => attempt(() => fire(id))}>
          Fire
        </button>
      </JsonEditor>
      <Differences before={before} now={value} />
      <a class="more" href={addressOf("history")} onClick={() => (historyFilter.value = { by: "all", name: id })}>
        Its history
      </a>
    </Card>
  );
}

export function VariablesPanel() {
  const [tree] = useState(() => new VariableTree());
  useFeed(tree.feed);
  const selected = tree.selected.value;
  return (
    <Page title="Variables" lead="What the pages and the plug-in share, as it changes.">
      <Tools>
        <FilterField label="Filter by id, type or owner" value={variableFilter.value} onFilter={(typed) => tree.filter(typed)} />
        <span class="faint">
          {tree.shown} of {tree.count}
        </span>
        <Hold feed={tree.feed} />
      </Tools>
      <Card class="variables">
        <Rows
          label="Variables"
          heads={heads}
          rows={tree.rows.value}
          keyOf={(row) => row.key}
          render={(row) => <Cells tree={tree} row={row} />}
          none="No variable matches."
          rowHeight={32}
          most={18}
        />
      </Card>
      {selected && <Selected variable={selected} />}
    </Page>
  );
}
