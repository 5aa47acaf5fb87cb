import type { ComponentChildren } from "preact";
import type { HostEvents } from "../connection/Protocol";
import type { Feed } from "../model/Feed";

interface FilterFieldProps {
  label: string;
  value: string;
  onFilter(value: string): void;
}

export function FilterField({ label, value, onFilter }: FilterFieldProps) {
  return (
    <input
      type="search"
      aria-label={label}
      placeholder={label}
      spellcheck={false}
      value={value}
      onInput={(event) => onFilter(event.currentTarget.value)}
    />
  );
}

/// Holds what a panel shows as it is, and says what waits meanwhile.
export function Hold<Name extends keyof HostEvents>({ feed }: { feed: Feed<Name> }) {
  const held = feed.held.value;
  return (
    <>
      {held && (
        <span class={feed.full.value ? "problem" : "faint"} role="status">
          {feed.waiting.value.toLocaleString("en")} waiting
          {feed.full.value && "; the rest is asked for when you go on"}
        </span>
      )}
      <button type="button" class="button" aria-pressed={held} onClick={() => feed.hold(!held)}>
        Hold
      </button>
    </>
  );
}

/// What stands above a panel's rows.
export function Tools({ children }: { children: ComponentChildren }) {
  return <div class="tools">{children}</div>;
}
