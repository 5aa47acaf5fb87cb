import type { HistoryRow } from "../connection/Protocol";

export interface Change extends HistoryRow {
  /// How many changes led to it, one by the other.
  readonly depth: number;
  /// When it came to the page, in milliseconds since 1970; undefined: before it looked.
  readonly seen: number | undefined;
}

export interface ChangeFilter {
  by: "all" | "page" | "plugin";
  /// Words that the variable's id has, all of them.
  name: string;
}

/// The newest changes of the variables, the filtered ones among them, and what led to what.
export class ChangeLog {
  static readonly most = 10_000;
  /// So many of the oldest go at a time.
  private static readonly slack = 1000;

  readonly changes: Change[] = [];
  readonly shown: Change[] = [];
  private readonly bySeq = new Map<number, Change>();
  private readonly effects = new Map<number, Change[]>();
  private by: ChangeFilter["by"] = "all";
  private words: readonly string[] = [];

  /// In their order; what is there already is passed over.
  add(rows: readonly HistoryRow[], seen: number | undefined): void {
    for (const row of rows) {
      if (row.seq <= (this.changes.at(-1)?.seq ?? 0)) continue;
      const cause = row.cause === undefined ? undefined : this.bySeq.get(row.cause);
      const change: Change = { ...row, depth: cause ? cause.depth + 1 : 0, seen };
      this.changes.push(change);
      this.bySeq.set(row.seq, change);
      if (row.cause !== undefined) {
        const siblings = this.effects.get(row.cause);
        if (siblings) siblings.push(change);
        else this.effects.set(row.cause, [change]);
      }
      if (this.passes(change)) this.shown.push(change);
    }
    if (this.changes.length > ChangeLog.most + ChangeLog.slack) this.trim();
  }

  clear(): void {
    this.changes.length = this.shown.length = 0;
    this.bySeq.clear();
    this.effects.clear();
  }

  filter({ by, name }: ChangeFilter): void {
    this.by = by;
    this.words = name.toLowerCase().split(/\s+/).filter(Boolean);
    this.shown.length = 0;
    for (const change of this.changes) if (this.passes(change)) this.shown.push(change);
  }

  causeOf(change: Change): Change | undefined {
    return change.cause === undefined ? undefined : this.bySeq.get(change.cause);
  }

  effectsOf(change: Change): readonly Change[] {
    return this.effects.get(change.seq) ?? [];
  }

  /// The one before it that gave the variable its value.
  before(change: Change): Change | undefined {
    let found: Change | undefined;
    for (const other of this.changes) {
      if (other.seq >= change.seq) break;
      if (other.name === change.name && (other.kind === "set" || other.value !== null)) found = other;
    }
    return found;
  }

  private passes({ by, name }: Change): boolean {
    if (this.by !== "all" && this.by !== by) return false;
    const id = name.toLowerCase();
    return this.words.every((word) => id.includes(word));
  }

  private trim(): void {
    const gone = this.changes.splice(0, this.changes.length - ChangeLog.most);
    for (const { seq } of gone) {
      this.bySeq.delete(seq);
      this.effects.delete(seq);
    }
    const oldest = this.changes[0]!.seq;
    const from = this.shown.findIndex(({ seq }) => seq >= oldest);
    this.shown.splice(0, from < 0 ? this.shown.length : from);
  }
}
