import { batch, computed, signal, type Signal } from "@preact/signals";
import { connection } from "../connection/Connection";
import type { HistoryRow, Json, VariableRow } from "../connection/Protocol";
import { differences } from "../logic/Difference";
import { IdTree, type Branch } from "../logic/IdTree";
import { Feed } from "./Feed";

export interface VariableState extends Omit<VariableRow, "value"> {
  readonly value: Json | undefined;
  /// The last other value, where one was seen.
  readonly before?: Json | undefined;
}

export interface Variable {
  readonly id: string;
  readonly state: Signal<VariableState>;
}

/// Kept from one visit of the panel to the next.
export const variableFilter = signal("");
export const pinnedBranches = signal<readonly string[]>([]);
const openBranches = signal<ReadonlySet<string>>(new Set());

export function toggleBranch(path: string): void {
  const open = new Set(openBranches.value);
  if (!open.delete(path)) open.add(path);
  openBranches.value = open;
}

export function togglePin(path: string): void {
  const others = pinnedBranches.value.filter((pinned) => pinned !== path);
  pinnedBranches.value = others.length < pinnedBranches.value.length ? others : [...others, path];
}

/// Not asked for yet.
const unknown: VariableState = {
  value: undefined, type: null, registered: false, kept: false, owner: null, subscribers: 0, writes: 0, triggers: 0,
};

/// The variables as a developer sees them, for as long as the panel is shown. A change touches the one row that shows
/// it: its own, or the closed branch that it is in.
export class VariableTree {
  readonly feed = new Feed<"variable">({
    event: "variable",
    alters: ["host"],
    load: () => this.load(),
    take: (rows) => rows.forEach((row) => this.take(row)),
  });
  readonly count = signal(0);
  readonly selected = signal<Variable | undefined>(undefined);

  private readonly tree = new IdTree<Variable>();
  private readonly variables = new Map<string, Variable>();
  private readonly flashes = new Map<Branch<Variable>, Signal<number>>();
  private loadedUpTo = 0;
  /// Counts what changes which rows there are.
  private readonly shape = signal(0);
  private wanted: readonly string[] = [];

  readonly shown = computed(() => (this.shape.value, this.tree.root.shown));
  readonly rows = computed(() => {
    this.shape.value;
    return this.tree.rows((path) => this.isOpen(path), pinnedBranches.value);
  });

  constructor() {
    this.filter(variableFilter.peek());
  }

  /// Lets through what has every word in its id, type or owner.
  filter(typed: string): void {
    variableFilter.value = typed;
    this.wanted = typed.toLowerCase().split(/\s+/).filter(Boolean);
    for (const variable of this.variables.values()) this.tree.setPasses(variable.id, this.passes(variable));
    ++this.shape.value;
  }

  isOpen(path: string): boolean {
    return this.wanted.length > 0 || openBranches.value.has(path);
  }

  /// How often something changed that the branch's row shows.
  flashesOf(branch: Branch<Variable>): Signal<number> {
    let found = this.flashes.get(branch);
    if (!found) this.flashes.set(branch, (found = signal(0)));
    return found;
  }

  private passes({ id, state }: Variable): boolean {
    const { type, owner } = state.peek();
    const text = `${id} ${type ?? ""} ${owner ?? ""}`.toLowerCase();
    return this.wanted.every((word) => text.includes(word));
  }

  private async load(): Promise<void> {
    const found = await connection.request("variables", {});
    this.loadedUpTo = this.feed.latest?.seq ?? 0;
    batch(() => {
      for (const id of this.variables.keys()) if (!Object.hasOwn(found, id)) this.drop(id);
      for (const [id, row] of Object.entries(found)) this.put(id, { ...row, value: row.value ?? undefined });
    });
  }

  private take(row: HistoryRow): void {
    // What was loaded meanwhile is shown already; that it changed is not.
    const branch = row.seq > this.loadedUpTo ? this.change(row) : this.tree.find(row.name);
    if (branch) ++this.flashesOf(this.visible(branch)).value;
  }

  private change(row: HistoryRow): Branch<Variable> {
    const now = this.variables.get(row.name)?.state.peek() ?? unknown;
    const value = row.value ?? undefined;
    const carries = row.kind === "set" || value !== undefined;
    // What no event tells: its type, its owner, its subscribers.
    if (now === unknown || (carries && typeof value !== typeof now.value)) this.feed.loadSoon();
    return this.put(row.name, {
      ...now,
      ...(carries && { value }),
      writes: now.writes + (row.kind === "set" ? 1 : 0),
      triggers: now.triggers + (row.kind === "trigger" ? 1 : 0),
    });
  }

  private put(id: string, state: VariableState): Branch<Variable> {
    const known = this.variables.get(id);
    if (!known) {
      const variable = { id, state: signal(state) };
      this.variables.set(id, variable);
      this.count.value = this.variables.size;
      ++this.shape.value;
      return this.tree.add(id, variable, this.passes(variable));
    }
    const { value, before, type, owner } = known.state.peek();
    known.state.value = { ...state, before: differences(value, state.value, 1).length > 0 ? value : before };
    if (type !== state.type || owner !== state.owner) {
      this.tree.setPasses(id, this.passes(known));
      ++this.shape.value;
    }
    return this.tree.find(id)!;
  }

  /// Another start of the host may not know it.
  private drop(id: string): void {
    this.variables.delete(id);
    this.tree.setPasses(id, false);
    this.count.value = this.variables.size;
    ++this.shape.value;
  }

  /// The branch itself, or the outermost one around it that is closed.
  private visible(branch: Branch<Variable>): Branch<Variable> {
    let found = branch;
    for (let at = branch.parent; at?.parent; at = at.parent) if (!this.isOpen(at.path)) found = at;
    return found;
  }
}
