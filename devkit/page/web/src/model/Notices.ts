import { signal } from "@preact/signals";

export interface Notice {
  id: number;
  message: string;
  kind: "done" | "failed";
  action?: { label: string; run(): void };
}

const shownMs = 10_000;
const mostNotices = 4;

/// What the page itself has to say, newest last.
export const notices = signal<readonly Notice[]>([]);
let lastId = 0;

function show(notice: Omit<Notice, "id">): void {
  const id = ++lastId;
  notices.value = [...notices.value, { id, ...notice }].slice(-mostNotices);
  if (notice.kind === "done") setTimeout(() => dismiss(id), shownMs);
}

export function dismiss(id: number): void {
  notices.value = notices.value.filter((notice) => notice.id !== id);
}

export function tellDone(message: string, action?: Notice["action"]): void {
  show({ message, kind: "done", ...(action && { action }) });
}

/// Stays until it is dismissed or something else is tried.
export function tellFailed(message: string): void {
  show({ message, kind: "failed" });
}

/// Runs what a control starts; a failure is told as a notice, until the next attempt.
export function attempt(work: () => Promise<void>): void {
  notices.value = notices.value.filter((notice) => notice.kind === "done");
  work().catch((error: unknown) => tellFailed(error instanceof Error ? error.message : String(error)));
}
