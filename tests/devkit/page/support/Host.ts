import { spawn, type ChildProcessWithoutNullStreams } from "node:child_process";
import { once } from "node:events";
import { createInterface } from "node:readline";
import { execFileSync } from "node:child_process";
import { mkdtempSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";

type Json = null | boolean | number | string | Json[] | { [name: string]: Json };
type Message = { [name: string]: Json };

function required(name: string): string {
  const value = process.env[name];
  if (!value) throw new Error(`${name} has to name a program.`);
  return value;
}

/// A development host with a page, in a data folder of its own, driven by JSON Lines.
export class Host {
  private lastId = 0;
  private readonly waiting = new Map<number, (message: Message) => void>();
  /// What the host told of without being asked, oldest first.
  readonly events: Message[] = [];

  private constructor(
    private readonly process: ChildProcessWithoutNullStreams,
    readonly folder: string,
    private readonly keepsFolder: boolean,
    readonly address: string,
  ) {}

  static async start(options: { folder?: string; load?: boolean; arguments?: string[] } = {}): Promise<Host> {
    const folder = options.folder ?? mkdtempSync(join(tmpdir(), "veridan-page-"));
    const child = spawn(required("VERIDAN_HOST"), ["--jsonl", "--page", "--data", folder, ...(options.arguments ?? [])]);
    child.stderr.pipe(process.stderr);
    const lines = createInterface({ input: child.stdout });
    const [first] = (await once(lines, "line")) as [string];
    const host = new Host(child, folder, options.folder !== undefined, String(JSON.parse(first).page));
    lines.on("line", (line) => {
      const message = JSON.parse(line) as Message;
      if (message["event"] !== undefined) host.events.push(message);
      else host.waiting.get(Number(message["id"]))?.(message);
    });
    if (options.load ?? true) await host.request("load");
    return host;
  }

  get pid(): number {
    return this.process.pid!;
  }

  get port(): number {
    return Number(new URL(this.address).port);
  }

  get token(): string {
    return new URL(this.address).hash.slice(1);
  }

  async request(op: string, args: Message = {}): Promise<Json> {
    const id = ++this.lastId;
    const answered = new Promise<Message>((resolve) => this.waiting.set(id, resolve));
    this.process.stdin.write(`${JSON.stringify({ id, op, ...args })}\n`);
    const answer = await answered;
    if (!answer["ok"]) throw new Error(String(answer["error"]));
    return answer["result"] ?? null;
  }

  set(scope: string, key: string, type: string, value: Json): Promise<Json> {
    return this.request("store.set", { scope, key, type, value });
  }

  async setting(scope: string, key: string): Promise<Json> {
    return ((await this.request("store.get", { scope, key })) as { value?: Json }).value ?? null;
  }

  /// Another process on the same store.
  strata(...args: string[]): void {
    execFileSync(required("VERIDAN_STRATA"), ["--data", this.folder, ...args]);
  }

  async kill(signal: NodeJS.Signals = "SIGKILL"): Promise<void> {
    if (this.process.exitCode !== null || this.process.signalCode !== null) return;
    const ended = once(this.process, "exit");
    this.process.kill(signal);
    await ended;
  }

  async end(): Promise<void> {
    await this.kill();
    if (!this.keepsFolder) rmSync(this.folder, { recursive: true, force: true });
  }
}
