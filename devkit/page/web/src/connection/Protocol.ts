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
  type: string;
  registered: boolean;
  kept: boolean;
  /// Who declares it, or else wrote it first.
  owner: "plugin" | "page";
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

export interface InfoResult {
  platform: string;
  userSid: string;
  logFile: string;
  dataDir: string;
  initialized: boolean;
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
  info: InfoResult;
  set: null;
  trigger: null;
  variables: Record<string, VariableRow>;
  history: HistoryRow[];
  watch: null;
  settle: null;
  "store.get": Entry;
  "store.set": null;
  "store.list": Record<string, Entry>;
  elevation: null;
  "elevation.answer": null;
  flyers: FlyerRow[];
  "flyer.press": null;
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
  host: { loaded: boolean; initialized: boolean };
}
