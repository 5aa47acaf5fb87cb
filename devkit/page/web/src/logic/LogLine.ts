/// From the gravest on: a level's number is its place, counted from 1.
export const levels = ["Fatal", "Error", "Warning", "Info", "Debug", "Verbose"] as const;

const tags = ["*F", "*E", ".W", " I", " D", " V"];
const head = /^(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3}) \[([0-9a-f]+\.[0-9a-f]+)\] (..): (.*)$/;

export interface LogLine {
  readonly number: number;
  /// Empty for a line that goes on with the message before it.
  readonly time: string;
  /// 0: none.
  readonly level: number;
  readonly message: string;
  readonly line: string;
}

export function parseLine(line: string, before: LogLine | undefined): LogLine {
  const number = (before?.number ?? 0) + 1;
  const [, time, , tag = "", message = ""] = head.exec(line) ?? [];
  if (time !== undefined) return { number, time, level: tags.indexOf(tag) + 1, message, line };
  return { number, time: "", level: line ? (before?.level ?? 0) : 0, message: line, line };
}

/// How many of the lines that came are the end of what was there already.
export function overlap(present: readonly string[], came: readonly string[]): number {
  for (let count = Math.min(present.length, came.length); count > 0; --count)
    if (came.slice(0, count).every((line, i) => line === present[present.length - count + i])) return count;
  return 0;
}
