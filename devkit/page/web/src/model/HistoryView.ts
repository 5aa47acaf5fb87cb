import { signal } from "@preact/signals";
import { connection } from "../connection/Connection";
import { ChangeLog, type Change, type ChangeFilter } from "../logic/ChangeLog";
import { Feed } from "./Feed";

/// Kept from one visit of the panel to the next.
export const historyFilter = signal<ChangeFilter>({ by: "all", name: "" });

/// The newest changes of the variables, for as long as the panel is shown.
export class HistoryView {
  readonly log = new ChangeLog();
  /// Counts what changes in the log.
  readonly version = signal(0);
  readonly selected = signal<Change | undefined>(undefined);
  readonly feed = new Feed<"variable">({
    event: "variable",
    load: () => this.load(),
    take: (rows) => {
      this.log.add(rows, Date.now());
      ++this.version.value;
    },
  });

  constructor() {
    this.log.filter(historyFilter.peek());
  }

  filter(change: Partial<ChangeFilter>): void {
    historyFilter.value = { ...historyFilter.value, ...change };
    this.log.filter(historyFilter.value);
    ++this.version.value;
  }

  /// Shows a change also where the filter holds it back.
  select(change: Change): void {
    this.selected.value = change;
    if (!this.log.shown.includes(change)) this.filter({ by: "all", name: "" });
  }

  private async load(): Promise<void> {
    // Every change has been counted: so many sequence numbers there are.
    const variables = Object.values(await connection.request("variables", {}));
    const last = variables.reduce((sum, { writes, triggers }) => sum + writes + triggers, 0);
    const rows = await connection.request("history", { since: Math.max(last - ChangeLog.most, 0) });
    // There may be a gap, and another start of the host counts from 1 again.
    const newest = this.log.changes.at(-1);
    if (newest && rows.find(({ seq }) => seq === newest.seq)?.name !== newest.name) this.log.clear();
    this.log.add(rows, undefined);
    ++this.version.value;
  }
}
