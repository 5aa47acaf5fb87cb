import type { Json } from "../connection/Commands";

/// One place at which two values differ. Undefined: it is not there.
export interface Difference {
  /// Such as "Categories.Games" or "0.url"; empty for the value as a whole.
  path: string;
  before: Json | undefined;
  now: Json | undefined;
}

const isContainer = (value: Json | undefined): value is Json[] | { [name: string]: Json } =>
  typeof value === "object" && value !== null;

/// Where two values differ, place by place. At most `most` places.
export function differences(before: Json | undefined, now: Json | undefined, most = 50): Difference[] {
  const found: Difference[] = [];
  const compare = (path: string, one: Json | undefined, other: Json | undefined): void => {
    if (found.length === most || one === other) return;
    if (!isContainer(one) || !isContainer(other) || Array.isArray(one) !== Array.isArray(other)) {
      found.push({ path, before: one, now: other });
      return;
    }
    const [left, right] = [new Map(Object.entries(one)), new Map(Object.entries(other))];
    for (const name of new Set([...left.keys(), ...right.keys()]))
      compare(path ? `${path}.${name}` : name, left.get(name), right.get(name));
  };
  compare("", before, now);
  return found;
}
