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

function hasInexact(value: Json): boolean {
  if (typeof value === "number") return Number.isInteger(value) && !Number.isSafeInteger(value);
  return typeof value === "object" && value !== null && Object.values(value).some(hasInexact);
}

/// The value, or why the text is none that can be sent as it stands.
export function parseJson(text: string): { value: Json } | { problem: string } {
  try {
    const value = JSON.parse(text) as Json;
    if (hasInexact(value)) return { problem: "A browser doesn't keep integers beyond 2⁵³ exactly: use JSON Lines for them." };
    return { value };
  } catch (error) {
    return { problem: `This is not JSON: ${error instanceof Error ? error.message : String(error)}` };
  }
}
