import type { Json } from "../connection/Commands";

/// On one line, cut where it is longer than somebody reads there; a large value costs no more than a small one.
export function brief(value: Json | undefined, most = 200): string {
  let text = "";
  const write = (part: Json): void => {
    if (typeof part === "string") text += JSON.stringify(part.length > most ? part.slice(0, most) : part);
    else if (typeof part !== "object" || part === null) text += String(part);
    else {
      const isList = Array.isArray(part);
      text += isList ? "[" : "{";
      let separator = "";
      for (const name in part) {
        if (text.length > most) return;
        text += isList ? separator : `${separator}${JSON.stringify(name)}:`;
        write((part as { [name: string]: Json })[name]!);
        separator = ",";
      }
      text += isList ? "]" : "}";
    }
  };
  if (value !== undefined) write(value);
  return text.length > most ? `${text.slice(0, most)}…` : text;
}

/// A browser reads integers beyond 2^53 roughly.
export function isExact(value: Json): boolean {
  if (typeof value === "number") return !Number.isInteger(value) || Number.isSafeInteger(value);
  return typeof value !== "object" || value === null || Object.values(value).every(isExact);
}

/// The value, or why the text is none that can be sent as it stands.
export function parseJson(text: string): { value: Json } | { problem: string } {
  try {
    const value = JSON.parse(text) as Json;
    if (!isExact(value)) return { problem: "A browser doesn't keep integers beyond 2⁵³ exactly: use JSON Lines for them." };
    return { value };
  } catch (error) {
    return { problem: `This is not JSON: ${error instanceof Error ? error.message : String(error)}` };
  }
}
