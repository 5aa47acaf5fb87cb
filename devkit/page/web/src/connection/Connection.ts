import { signal } from "@preact/signals";
import type { Arguments, HelloResult, HostEvents, Op, Result } from "./Protocol";

/// "refused": the host knows another token; only a new address helps. "lost": tried again by itself. "hangs", "died": its
/// watchdog says so, and starts it again on request.
export type ConnectionState = "connecting" | "connected" | "lost" | "refused" | "hangs" | "died";

type EventName = keyof HostEvents;
type Listener<Name extends EventName> = (event: HostEvents[Name]) => void;

interface Pending {
  resolve(result: unknown): void;
  reject(error: Error): void;
}

const policyViolation = 1008;
const shortestPauseMs = 250;
const longestPauseMs = 4000;
/// What is silent from one beat to the next does not answer any more.
const beatMs = 2000;

/// The page's one connection to the host: requests that are answered, events that are told to listeners, and a
/// connection that was lost coming back by itself.
class Connection {
  readonly state = signal<ConnectionState>("connecting");
  /// What the host said of itself when it was last reached.
  readonly hello = signal<HelloResult | undefined>(undefined);

  private socket: WebSocket | undefined;
  private token = "";
  private lastId = 0;
  private pause = shortestPauseMs;
  private timer: ReturnType<typeof setTimeout> | undefined;
  private silent = false;
  private readonly pending = new Map<number, Pending>();
  private readonly listeners = new Map<string, Set<(event: never) => void>>();
  private readonly starters: (() => Promise<void>)[] = [];

  constructor() {
    setInterval(() => this.beat(), beatMs);
  }

  /// Carried out each time the host has been reached, in the order of registration, before the state is "connected".
  onConnect(starter: () => Promise<void>): void {
    this.starters.push(starter);
  }

  /// Ends when the function that it gives is called.
  on<Name extends EventName>(name: Name, listener: Listener<Name>): () => void {
    const listeners = this.listeners.get(name) ?? new Set();
    this.listeners.set(name, listeners);
    listeners.add(listener);
    return () => listeners.delete(listener);
  }

  /// Connects with this token, also where another connection is open.
  open(token: string): void {
    this.token = token;
    clearTimeout(this.timer);
    this.pause = shortestPauseMs;
    this.drop();
    this.connect();
  }

  /// Rejects with the host's own sentence, or when the connection is lost first.
  request<Name extends Op>(op: Name, args: Arguments<Name>): Promise<Result<Name>> {
    return this.send({ op, ...args }) as Promise<Result<Name>>;
  }

  /// For what nobody waits for.
  tell<Name extends Op>(op: Name, args: Arguments<Name>): void {
    this.request(op, args).catch(() => undefined);
  }

  private send(request: object): Promise<unknown> {
    const socket = this.socket;
    if (socket?.readyState !== WebSocket.OPEN) return Promise.reject(new Error("There is no connection to the host."));
    const id = ++this.lastId;
    return new Promise((resolve, reject) => {
      this.pending.set(id, { resolve, reject });
      socket.send(JSON.stringify({ id, ...request }));
    });
  }

  private connect(): void {
    const socket = new WebSocket(`ws://${location.host}/socket`);
    this.socket = socket;
    this.silent = false;
    socket.onopen = () => void this.start(socket);
    socket.onmessage = (message: MessageEvent<string>) => this.receive(message.data);
    socket.onclose = (event) => this.lose(event.code === policyViolation ? "refused" : "lost");
  }

  private async start(socket: WebSocket): Promise<void> {
    try {
      const hello = await this.request("hello", { token: this.token });
      this.pause = shortestPauseMs;
      if (hello.stopped) {
        this.state.value = hello.stopped;
        return;
      }
      this.hello.value = hello;
      for (const starter of this.starters) await starter();
      this.state.value = "connected";
    } catch {
      socket.close();
    }
  }

  /// An empty message is answered at once by a host that runs, whatever else it is asked for.
  private beat(): void {
    if (this.silent) return this.lose("lost");
    this.silent = this.socket !== undefined;
    if (this.socket?.readyState === WebSocket.OPEN) this.socket.send("");
  }

  private receive(text: string): void {
    this.silent = false;
    if (text === "") return;
    const message = JSON.parse(text) as { id?: number; ok?: boolean; result?: unknown; error?: string; event?: string };
    if (message.event !== undefined) {
      for (const listener of this.listeners.get(message.event) ?? []) listener(message as never);
      return;
    }
    const pending = this.pending.get(message.id ?? 0);
    this.pending.delete(message.id ?? 0);
    if (message.ok) pending?.resolve(message.result);
    else pending?.reject(new Error(message.error ?? "The host gave no reason."));
  }

  private lose(state: "lost" | "refused"): void {
    this.drop();
    this.state.value = state;
    if (state === "refused") return;
    this.timer = setTimeout(() => this.connect(), this.pause);
    this.pause = Math.min(this.pause * 2, longestPauseMs);
  }

  private drop(): void {
    if (this.socket) {
      this.socket.onopen = this.socket.onmessage = this.socket.onclose = null;
      this.socket.close();
      this.socket = undefined;
    }
    const pending = [...this.pending.values()];
    this.pending.clear();
    for (const { reject } of pending) reject(new Error("The connection to the host was lost."));
  }
}

export const connection = new Connection();
