import { batch, signal } from "@preact/signals";
import { useEffect } from "preact/hooks";
import { connection } from "../connection/Connection";
import type { Arguments, HostEvents } from "../connection/Protocol";
import { attempt } from "./Notices";

type EventName = keyof HostEvents;

/// What a panel shows of the host.
export interface Source<Name extends EventName> {
  event: Name;
  /// Watched while the panel is shown. Nothing for the variables: the suite's pages watch them anyway.
  watch?: Arguments<"watch">;
  /// Events after which the state is asked for anew.
  alters?: readonly EventName[];
  /// Asks for the state as it is now.
  load(): Promise<void>;
  /// Takes events in their order. The first ones after a load may be older than its answer.
  take(events: readonly HostEvents[Name][]): void;
}

/// Kept while they wait; with more, the state is asked for anew.
const mostWaiting = 10_000;
const soonMs = 300;

/// Events on their way into a panel, from when it is shown until it is left: handed over once a frame, all that came
/// since, and kept back while the panel is held or the page is out of sight.
export class Feed<Name extends EventName> {
  readonly held = signal(false);
  /// Events that a held panel keeps back.
  readonly waiting = signal(0);
  /// More came than are kept.
  readonly full = signal(false);
  /// The last event that came since it began, also while the panel is held.
  latest: HostEvents[Name] | undefined;

  private events: HostEvents[Name][] = [];
  private stale = false;
  private loading = false;
  private frame = 0;
  private soon: ReturnType<typeof setTimeout> | undefined;

  constructor(private readonly source: Source<Name>) {}

  /// Ends when the function that it gives is called.
  begin(): () => void {
    const { event, watch, alters = [] } = this.source;
    this.latest = undefined;
    const ends = alters.map((name) => connection.on(name, () => this.loadSoon()));
    ends.push(connection.on(event, (received) => this.receive(received)));
    if (watch) connection.tell("watch", watch);
    this.load();
    return () => {
      ends.forEach((end) => end());
      if (watch) connection.tell("watch", { ...watch, on: false });
      cancelAnimationFrame(this.frame);
      clearTimeout(this.soon);
      this.frame = 0;
      this.soon = undefined;
    };
  }

  /// For what no event tells; many calls ask once, and a held panel asks when it goes on.
  loadSoon(): void {
    this.soon ??= setTimeout(() => {
      this.soon = undefined;
      this.stale = true;
      this.schedule();
    }, soonMs);
  }

  hold(on: boolean): void {
    this.held.value = on;
    this.schedule();
  }

  private load(): void {
    this.events = [];
    this.stale = false;
    this.loading = true;
    attempt(() =>
      this.source.load().finally(() => {
        this.loading = false;
        this.schedule();
      }),
    );
  }

  private receive(event: HostEvents[Name]): void {
    this.latest = event;
    if (this.events.length < mostWaiting) this.events.push(event);
    else this.stale = true;
    this.schedule();
  }

  private schedule(): void {
    this.frame ||= requestAnimationFrame(() => {
      this.frame = 0;
      batch(() => this.handOver());
    });
  }

  private handOver(): void {
    if (this.loading) return;
    const held = this.held.value;
    this.waiting.value = held ? this.events.length : 0;
    this.full.value = held && this.events.length === mostWaiting;
    if (held) return;
    if (this.stale) return this.load();
    const events = this.events;
    this.events = [];
    if (events.length > 0) this.source.take(events);
  }
}

/// Runs the feed while the component is shown and the host is reached.
export function useFeed<Name extends EventName>(feed: Feed<Name>): void {
  const connected = connection.state.value === "connected";
  useEffect(() => (connected ? feed.begin() : undefined), [feed, connected]);
}
