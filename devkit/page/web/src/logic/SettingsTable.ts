import type { Json } from "../connection/Commands";

/// A setting as its documentation has it.
export interface KnownSetting {
  readonly key: string;
  readonly type: string;
  readonly otherwise: Json;
  readonly purpose: string;
}

/// The rows of the tables in docs/settings.md: key, class, type, default, stored as, shown, saved, for.
export function parseSettings(markdown: string): KnownSetting[] {
  return markdown.split("\n").flatMap((line) => {
    const [key = "", , , otherwise = "", type = "", , , purpose = ""] = line
      .split("|")
      .slice(1, -1)
      .map((cell) => cell.trim().replace(/^`(.*)`$/, "$1"));
    return line.startsWith("| `") ? [{ key, type, otherwise: JSON.parse(otherwise) as Json, purpose }] : [];
  });
}
