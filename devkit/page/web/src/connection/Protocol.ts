// What travels between the page and the host.

import type { Commands, Json } from "./Commands";

export type { Json } from "./Commands";

export type Scope = string;
export type SettingType = Commands["store.set"]["type"];

export interface HelloResult {
  protocol: number;
  platform: string;
  version: string;
  /// The host's watchdog says it in the stead of a host that does not answer.
  stopped?: "hangs" | "died";
}

export interface VariableRow {
  value: Json;
  type: string | null;
  registered: boolean;
  kept: boolean;
  /// The class of the plug-in that declares it.
  owner: string | null;
  subscribers: number;
  writes: number;
  triggers: number;
}

export interface HistoryRow {
  seq: number;
  name: string;
  kind: "set" | "trigger";
  by: "page" | "plugin";
  value: Json;
  /// The change that the plug-in was being told of when it made this one.
  cause?: number;
}

export interface Entry {
  found: boolean;
  type: SettingType;
  value: Json;
  constraints: number;
}

export interface FlyerRow {
  id: number;
  title: string;
  description: string;
  buttons: { caption: string; action: string | null }[];
  state: "created" | "shown" | "closed";
}

export interface MetricRow {
  code: number;
  name: string;
  payload?: string;
  major: boolean;
}

export type FaultLibrary = "store" | "flyer" | "metrics";

export interface FaultRow {
  library: FaultLibrary;
  /// Nothing: any function of the library.
  function?: string;
  key?: string;
  code: number;
  /// Calls that are left; 0: until it is cleared.
  count: number;
}

export interface NamedEventRow {
  name: string;
  signalled: boolean;
}

export interface InfoResult {
  platform: string;
  userSid: string;
  logFile: string;
  dataDir: string;
  initialized: boolean;
  recording: boolean;
}

/// Of a recording that ended: its text, or the file that the host wrote.
export interface RecordResult {
  lines: number;
  text?: string;
  file?: string;
}

export interface LoadResult {
  initialized: boolean;
  loaded: boolean;
  error?: string;
}

/// What the requests of the pages are answered with.
interface Results {
  hello: HelloResult;
  /// Of a watchdog only.
  restart: null;
  load: LoadResult;
  unload: { peersOutstanding: number };
  record: RecordResult;
  info: InfoResult;
  log: string[];
  set: null;
  trigger: null;
  variables: Record<string, VariableRow>;
  history: HistoryRow[];
  watch: null;
  settle: null;
  "store.get": Entry;
  "store.set": null;
  "store.list": Record<string, Entry>;
  "store.remove": null;
  "store.constrain": null;
  "store.fault": null;
  elevation: null;
  "elevation.answer": null;
  flyers: FlyerRow[];
  "flyer.press": null;
  "flyer.fault": null;
  metrics: MetricRow[];
  "metrics.fault": null;
  faults: { active: FaultRow[]; functions: Record<FaultLibrary, string[]> };
  urls: string[];
  "clipboard.get": { text: string };
  "clipboard.set": null;
  "event.create": null;
  events: NamedEventRow[];
  strings: null;
}

export type Op = keyof Results;
export type Result<Name extends Op> = Results[Name];
export type Arguments<Name extends Op> = Name extends keyof Commands ? Commands[Name] : Name extends "hello" ? { token: string } : object;

export interface HostEvents {
  variable: HistoryRow;
  store: Entry & { scope: Scope; key: string; kind: "changed" | "removed" };
  flyer: FlyerRow;
  url: { url: string };
  elevation: { prompt: number; client: string };
  metric: MetricRow;
  log: { line: string };
  faults: { active: FaultRow[] };
  host: { loaded: boolean; initialized: boolean; recording: boolean };
}
