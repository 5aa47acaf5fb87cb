import { signal } from "@preact/signals";
import { connection } from "../connection/Connection";
import type { HostEvents } from "../connection/Protocol";
import { overlap, parseLine, type LogLine } from "../logic/LogLine";
import { Feed } from "./Feed";

const mostLines = 20_000;

/// What the panel shows, also when it is opened again.
export const logFilter = signal("");
/// The gravest levels up to this one; 0 shows also what has none.
export const logLevel = signal(0);

/// The end of the plug-in's log, oldest line first.
export class LogTail {
  readonly rows = signal<readonly LogLine[]>([]);
  readonly feed = new Feed<"log">({
    event: "log",
    watch: { topic: "log" },
    load: () => this.load(),
    take: (events) => this.take(events),
  });
  private lines: LogLine[] = [];
  private fresh = false;

  get count(): number {
    return this.lines.length;
  }

  filter(typed: string, level = logLevel.value): void {
    logFilter.value = typed;
    logLevel.value = level;
    this.rows.value = this.lines.filter(this.shown());
  }

  private shown(): (line: LogLine) => boolean {
    const wanted = logFilter.value.toLowerCase();
    const most = logLevel.value;
    return ({ level, line }) =>
      (most === 0 || (level > 0 && level <= most)) && (wanted === "" || line.toLowerCase().includes(wanted));
  }

  private async load(): Promise<void> {
    const lines = await connection.request("log", { lines: mostLines });
    this.lines = [];
    this.append(lines);
    this.fresh = true;
    this.rows.value = this.lines.filter(this.shown());
  }

  private append(lines: readonly string[]): void {
    for (const line of lines) this.lines.push(parseLine(line, this.lines.at(-1)));
  }

  private take(events: readonly HostEvents["log"][]): void {
    let came = events.map(({ line }) => line);
    if (this.fresh) came = came.slice(overlap(this.lines.slice(-came.length).map(({ line }) => line), came));
    this.fresh = false;
    if (came.length === 0) return;
    const before = this.lines.length;
    this.append(came);
    const added = this.lines.slice(before).filter(this.shown());
    if (this.lines.length > mostLines) {
      this.lines = this.lines.slice(-mostLines);
      this.rows.value = this.lines.filter(this.shown());
    } else if (added.length > 0) {
      this.rows.value = [...this.rows.peek(), ...added];
    }
  }
}
