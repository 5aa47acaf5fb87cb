// Made of the host's schema by generate-commands.mjs; not to be edited.

export type Json = null | boolean | number | string | Json[] | { [name: string]: Json };

export interface Commands {
  /// lets real time pass
  advance: { ms: number };
  /// what the clipboard holds
  "clipboard.get": Record<string, never>;
  /// fills the clipboard
  "clipboard.set": { text: string };
  /// the answer to the plug-in's elevation prompts
  elevation: { answer: "accept" | "decline" | "ask" };
  /// answers one prompt
  "elevation.answer": { prompt: number; accept: boolean };
  /// makes a named system event
  "event.create": { name: string };
  /// whether a named event is signalled
  "event.state": { name: string };
  /// the named events that were made, and whether they are signalled
  events: Record<string, never>;
  /// what is made to fail, and the functions that can be
  faults: Record<string, never>;
  /// makes the plug-in's next calls of a flyer function answer a code
  "flyer.fault": { function?: string; code?: number; count?: number };
  /// presses a button of a flyer, which are counted from 0
  "flyer.press": { flyer: number; button: number };
  /// the flyers that were made
  flyers: Record<string, never>;
  /// a variable's value
  get: { name: string };
  /// what was done with the variables, as far back as it is kept
  history: { name?: string; since?: number };
  /// what the host and the plug-in are, and where their files lie
  info: Record<string, never>;
  /// loads and initialises the plug-in, without the libraries that are to be missing
  load: { missing?: ("strata" | "metrics" | "flyer")[] };
  /// the last lines of the plug-in's log
  log: { lines?: number; level?: number };
  /// the metric events that were recorded
  metrics: Record<string, never>;
  /// makes the plug-in's next metric events, or those of one function, answer a code
  "metrics.fault": { code: number; count?: number; function?: string };
  /// ends the host
  quit: Record<string, never>;
  /// records requests and what the plug-in does: into a file, or into the answer at the end
  record: { on?: boolean; file?: string };
  /// removes a value of the registry
  "registry.remove": { root: "machine" | "user"; key: string; value: string };
  /// what the plug-in reads at its next start
  "registry.set": { root: "machine" | "user"; key: string; value: string; dword?: number; string?: string };
  /// every command with its parameters
  schema: Record<string, never>;
  /// writes a variable as a page does
  set: { name: string; value: Json };
  /// waits until the store has told of every change
  settle: { timeoutMs?: number };
  /// replaces the constraint word of a key
  "store.constrain": { scope: string; key: string; constraints: number };
  /// makes the plug-in's next calls of a store function answer a code
  "store.fault": { function?: string; code?: number; key?: string; count?: number };
  /// what the store holds under a key
  "store.get": { scope: string; key: string };
  /// every entry whose key begins so
  "store.list": { scope: string; prefix?: string };
  /// removes a value and its constraint word
  "store.remove": { scope: string; key: string };
  /// changes a setting as the product does
  "store.set": { scope: string; key: string; type: "bool" | "int32" | "int64" | "string" | "utf8" | "object"; value: Json };
  /// writes entries by key, all or none; with absent only where there is no value
  "store.write": { scope: string; entries: Record<string, Json>; absent?: boolean };
  /// every value write that reached the store in this run
  "store.writes": { since?: number };
  /// fills localised strings and tells that they are new
  strings: { language: string; values: Record<string, string> };
  /// fires a trigger as a page does
  trigger: { name: string; value?: Json };
  /// deletes the plug-in and unloads its library
  unload: Record<string, never>;
  /// the addresses that the plug-in opened
  urls: Record<string, never>;
  /// every variable whose id begins so
  variables: { prefix?: string };
  /// events of a topic from now on, of variables and keys that begin so
  watch: { topic?: "variables" | "store" | "flyers" | "metrics" | "urls" | "log" | "elevation" | "host" | "faults" | "requests" | "writes"; prefix?: string; on?: boolean };
}
